// Host contract: where a find can be sent from this machine, and the sending.
// A host names only what works where it runs; what each destination receives is decided by the app.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/graphics/ui_image.h"

enum class ShareIcon { copy, picture, mail, bubble, people, chat, browser };

struct ShareDestination {
    enum class Need { anything, picture, link };

    /// The host's own word for it.
    std::string name;
    /// By which the app decides what it receives ("com.apple.UIKit.activity.Mail").
    std::string activityType;
    std::string title;
    ShareIcon icon = ShareIcon::copy;
    /// Without which it is of no use.
    Need needs = Need::anything;
};

/// What one destination receives. Empty texts and no picture for what it does not.
struct SharedContent {
    std::string subject;
    std::string text;
    std::string link;
    UIImageRef image;
    std::string file = {};  ///< path, of a film

    /// For destinations that have one text: the link follows the text that does not hold it.
    std::string textWithLink() const;
    /// "Zentaro" and the words of the link's path, for a file without its ending: the characters that every
    /// system allows.
    std::string fileName() const;
};

struct ShareOutcome {
    bool isDone = false;
    /// One line for the user: what was done, or why not; empty where there is nothing to say, as when the
    /// user thought better of it.
    std::string message;
};

class ShareDestinations {
  public:
    using Answer = std::function<void(const ShareOutcome&)>;

    virtual ~ShareDestinations() = default;
    virtual std::vector<ShareDestination> destinations() = 0;
    /// Returns at once; the answer comes once, on the main thread, now or with a later frame.
    virtual void share(const ShareDestination& destination, const SharedContent& content, Answer answer) = 0;
    /// Where the system has a sheet of its own that is to be shown in the place of the app's.
    virtual std::optional<ShareDestination> systemSheet() { return std::nullopt; }
};

/// Those of this run; the host sets them at start. Null where there are none.
std::shared_ptr<ShareDestinations> sharedShareDestinations();
void setSharedShareDestinations(std::shared_ptr<ShareDestinations> destinations);
