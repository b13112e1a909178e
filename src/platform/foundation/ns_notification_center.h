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

/// Valid while it is being delivered.
struct NSNotification {
    const std::string& name;
    /// Who posted it, or what it is about; may be null.
    const void* object;
};

class NSNotificationCenter {
  public:
    static NSNotificationCenter& defaultCenter();

    using Block = std::function<void(const NSNotification& notification)>;

    /// Calls block for every posting of name (with any object if object is null) while observer lives; a dead
    /// observer is forgotten.
    void addObserver(std::weak_ptr<void> observer, const std::string& name, const void* object, Block block);
    void removeObserver(const void* observer);

    /// Observers added while a posting is being delivered do not see it; removed ones no longer do.
    void postNotificationName(const std::string& name, const void* object = nullptr);

  private:
    struct Observer {
        std::weak_ptr<void> observer;
        std::string name;
        const void* object;
        Block block;
        bool removed = false;
    };
    std::vector<std::shared_ptr<Observer>> _observers;
};
