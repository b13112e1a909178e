// Notifications: named messages from one part of the app to whoever listens, delivered at once and in the
// order of registration.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

inline const std::string UIApplicationDidBecomeActiveNotification =
    "UIApplicationDidBecomeActiveNotification";
inline const std::string UIApplicationWillResignActiveNotification =
    "UIApplicationWillResignActiveNotification";
inline const std::string UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
inline const std::string UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
inline const std::string UIApplicationWillTerminateNotification = "UIApplicationWillTerminateNotification";
inline const std::string UIApplicationDidReceiveMemoryWarningNotification =
    "UIApplicationDidReceiveMemoryWarningNotification";

class NSNotificationCenter {
  public:
    static NSNotificationCenter& defaultCenter();

    /// Calls block for every posting of name (from any sender if sender is null) while observer lives; a
    /// dead observer is forgotten.
    void addObserver(std::weak_ptr<void> observer, const std::string& name, const void* sender,
                     std::function<void()> block);
    void removeObserver(const void* observer);

    /// Observers added while a posting is being delivered do not see it; removed ones no longer do.
    void postNotificationName(const std::string& name, const void* sender = nullptr);

  private:
    struct Observer {
        std::weak_ptr<void> object;
        std::string name;
        const void* sender;
        std::function<void()> block;
        bool removed = false;
    };
    std::vector<std::shared_ptr<Observer>> _observers;
};
