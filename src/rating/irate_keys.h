// The settings that the rating request keeps.
// Dates, counts, and the versions that the user answered for.
#pragma once

inline constexpr const char* iRateFirstUsedKey = "iRateFirstUsed";
inline constexpr const char* iRateUseCountKey = "iRateUseCount";
inline constexpr const char* iRateEventCountKey = "iRateEventCount";
inline constexpr const char* iRateLastRemindedKey = "iRateLastReminded";
inline constexpr const char* iRateLastVersionUsedKey = "iRateLastVersionUsed";
inline constexpr const char* iRateRatedVersionKey = "iRateRatedVersionChecked";
inline constexpr const char* iRateDeclinedVersionKey = "iRateDeclinedVersion";
inline constexpr const char* iRateAppStoreIDKey = "iRateAppStoreID";
