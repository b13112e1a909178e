// The clipboard of X11 with a text, a picture and a file at once, from which programs take what they know.
// SDL's own clipboard holds text alone. What is offered can be pasted while the app runs, and until something
// else is copied.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

class X11Clipboard {
  public:
    /// A connection and a thread of its own. Null where no X server answers.
    static std::unique_ptr<X11Clipboard> connect();
    ~X11Clipboard();
    X11Clipboard(const X11Clipboard&) = delete;
    X11Clipboard& operator=(const X11Clipboard&) = delete;

    /// Takes the clipboard over; picture: a PNG file; file: the path of one that file managers and mail
    /// programs paste, empty for none. NO if the server does not answer within two seconds.
    bool offer(const std::string& text, std::optional<std::vector<uint8_t>> picture, const std::string& file);

  private:
    class Server;

    explicit X11Clipboard(std::unique_ptr<Server> server);

    std::unique_ptr<Server> _server;
    std::thread _thread;
};
