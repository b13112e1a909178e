// The place where a second start hands its link to the app that runs already: a socket in the user's runtime
// folder. Whoever holds the lock beside it owns it, so that what a dead process left is known for stale.
// Nothing here waits for longer than it is told to, however stuck the other side is.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A file descriptor that closes with its owner.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : _number(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;

    int number() const { return _number; }
    explicit operator bool() const { return _number >= 0; }

  private:
    int _number = -1;
};

/// What is kept for the user while logged in: $XDG_RUNTIME_DIR/zentaro, or a folder of the user's own under
/// /tmp. Nothing if that belongs to somebody else.
std::optional<std::string> linkSocketFolder();

enum class HandOver {
    taken,   ///< an app that runs has the link
    nobody,  ///< none runs
    stuck,   ///< one runs, and did not answer in time
};

/// Hands a link (without a line end in it) to the app that runs.
HandOver handLinkOver(const std::string& folder, std::string_view link, std::chrono::milliseconds patience);

/// The receiving end. Where another app holds the place, it is tried for again every other second.
class LinkSocket {
  public:
    /// An empty folder: no links will come.
    explicit LinkSocket(std::string folder) : _folder(std::move(folder)) {}
    ~LinkSocket();
    LinkSocket(const LinkSocket&) = delete;
    LinkSocket& operator=(const LinkSocket&) = delete;

    /// Links that were handed over since the last call.
    std::vector<std::string> take();

  private:
    using Clock = std::chrono::steady_clock;

    struct Giver {
        Descriptor connection;
        Clock::time_point deadline;
        std::string text;
    };

    void listen();
    bool isLockInPlace() const;
    void greet(Clock::time_point now);
    /// Whether there is more to come.
    static bool read(Giver& giver, std::vector<std::string>& links);

    std::string _folder;
    Descriptor _lock;
    Descriptor _socket;
    Clock::time_point _nextTry;
    std::vector<Giver> _givers;
};
