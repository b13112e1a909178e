// The owner's side of X11 selections, by ICCCM section 2: targets, several at once, large contents in parts.
// One thread alone talks to the server; the others wake it.
#include "hosts/desktop/x11_clipboard.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <list>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>
#include <xcb/xcb.h>

#include "platform/foundation/file_url.h"

namespace {

using Bytes = std::shared_ptr<const std::vector<uint8_t>>;

constexpr auto patience = std::chrono::seconds(2);
/// Bytes that go to the server at once.
constexpr std::size_t largestPart = 1 << 17;
constexpr std::size_t mostTransfers = 16;

template <typename T>
struct Freed {
    void operator()(T* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, Freed<T>>;

struct Atoms {
    xcb_atom_t clipboard, targets, multiple, timestamp, incremental, atomPair, mark, utf8, plainUTF8, plain,
        png, uris, copiedFiles;
};

Bytes bytesOf(const std::string& text) {
    return std::make_shared<const std::vector<uint8_t>>(text.begin(), text.end());
}

}  // namespace

class X11Clipboard::Server {
  public:
    explicit Server(xcb_connection_t* connection) : _connection(connection), _wake(eventfd(0, EFD_CLOEXEC)) {
        xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(_connection)).data;
        _window = xcb_generate_id(_connection);
        const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(_connection, 0, _window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        internAtoms();
    }
    ~Server() {
        xcb_disconnect(_connection);
        close(_wake);
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    void run() {
        while (!_isStopping && xcb_connection_has_error(_connection) == 0) {
            while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(_connection)})
                take(*event);
            askForTime();
            xcb_flush(_connection);
            std::array<pollfd, 2> waiting{
                {{xcb_get_file_descriptor(_connection), POLLIN, 0}, {_wake, POLLIN, 0}}};
            if (poll(waiting.data(), waiting.size(), -1) > 0 && waiting[1].revents != 0) {
                uint64_t count = 0;
                if (read(_wake, &count, sizeof count) < 0) return;
            }
        }
    }

    void stop() {
        _isStopping = true;
        wake();
    }

    bool offer(const std::string& text, std::optional<std::vector<uint8_t>> picture,
               const std::string& file) {
        std::unique_lock lock(_mutex);
        _offers.clear();
        for (const xcb_atom_t target : {_atoms.utf8, _atoms.plainUTF8, _atoms.plain})
            _offers.emplace_back(target, bytesOf(text));
        if (picture)
            _offers.emplace_back(_atoms.png,
                                 std::make_shared<const std::vector<uint8_t>>(*std::move(picture)));
        if (!file.empty()) {
            _offers.emplace_back(_atoms.uris, bytesOf(fileURLOfPath(file) + "\r\n"));
            _offers.emplace_back(_atoms.copiedFiles, bytesOf("copy\n" + fileURLOfPath(file)));
        }
        _wantsToOwn = true;
        _owns = false;
        wake();
        return _changed.wait_for(lock, patience, [this] { return _owns; });
    }

  private:
    struct Transfer {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t target;
        Bytes bytes;
        std::size_t sent;
    };

    void wake() const {
        const uint64_t one = 1;
        if (write(_wake, &one, sizeof one) < 0) return;
    }

    void internAtoms() {
        const std::array<std::pair<std::string_view, xcb_atom_t*>, 13> names{
            {{"CLIPBOARD", &_atoms.clipboard},
             {"TARGETS", &_atoms.targets},
             {"MULTIPLE", &_atoms.multiple},
             {"TIMESTAMP", &_atoms.timestamp},
             {"INCR", &_atoms.incremental},
             {"ATOM_PAIR", &_atoms.atomPair},
             {"ZENTARO_TIME", &_atoms.mark},
             {"UTF8_STRING", &_atoms.utf8},
             {"text/plain;charset=utf-8", &_atoms.plainUTF8},
             {"text/plain", &_atoms.plain},
             {"image/png", &_atoms.png},
             {"text/uri-list", &_atoms.uris},
             {"x-special/gnome-copied-files", &_atoms.copiedFiles}}};
        for (const auto& [name, atom] : names) {
            const auto asked =
                xcb_intern_atom(_connection, 0, static_cast<uint16_t>(name.size()), name.data());
            const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(_connection, asked, nullptr));
            *atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        }
    }

    /// Owners state when they became so, in the server's time; a change of a property tells it.
    void askForTime() {
        const std::lock_guard guard(_mutex);
        if (!std::exchange(_wantsToOwn, false)) return;
        xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, _window, _atoms.mark, XCB_ATOM_STRING, 8, 0,
                            nullptr);
    }

    void take(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
            case XCB_PROPERTY_NOTIFY:
                return propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
            case XCB_SELECTION_REQUEST:
                return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
            case XCB_SELECTION_CLEAR: {
                const std::lock_guard guard(_mutex);
                _offers.clear();
                return;
            }
            default:  // errors among them: requestors may vanish at any time
                return;
        }
    }

    void propertyChanged(const xcb_property_notify_event_t& event) {
        if (event.window == _window && event.atom == _atoms.mark) {
            xcb_set_selection_owner(_connection, _window, _atoms.clipboard, event.time);
            const auto asked = xcb_get_selection_owner(_connection, _atoms.clipboard);
            const Reply<xcb_get_selection_owner_reply_t> reply(
                xcb_get_selection_owner_reply(_connection, asked, nullptr));
            const std::lock_guard guard(_mutex);
            _ownedSince = event.time;
            _owns = reply && reply->owner == _window;
            _changed.notify_all();
        } else if (event.state == XCB_PROPERTY_DELETE) {
            const auto waiting = std::find_if(_transfers.begin(), _transfers.end(), [&](const Transfer& one) {
                return one.requestor == event.window && one.property == event.atom;
            });
            if (waiting != _transfers.end() && !sendPart(*waiting)) _transfers.erase(waiting);
        }
    }

    /// NO after the empty part that ends it.
    bool sendPart(Transfer& transfer) {
        const std::size_t size = std::min(largestPart, transfer.bytes->size() - transfer.sent);
        xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                            transfer.target, 8, static_cast<uint32_t>(size),
                            transfer.bytes->data() + transfer.sent);
        transfer.sent += size;
        return size > 0;
    }

    void answer(const xcb_selection_request_event_t& request) {
        xcb_selection_notify_event_t notice{};
        notice.response_type = XCB_SELECTION_NOTIFY;
        notice.time = request.time;
        notice.requestor = request.requestor;
        notice.selection = request.selection;
        notice.target = request.target;
        // Old programs name no property and mean the target's.
        const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
        const bool isGiven = request.target == _atoms.multiple
                                 ? convertSeveral(request.requestor, property)
                                 : convert(request.requestor, request.target, property);
        notice.property = isGiven ? property : xcb_atom_t{XCB_ATOM_NONE};
        xcb_send_event(_connection, 0, request.requestor, 0, reinterpret_cast<const char*>(&notice));
    }

    bool convertSeveral(xcb_window_t requestor, xcb_atom_t property) {
        const auto asked = xcb_get_property(_connection, 0, requestor, property, XCB_ATOM_ANY, 0, 64);
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(_connection, asked, nullptr));
        if (!reply || reply->format != 32) return false;
        const auto* const begin = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
        std::vector<xcb_atom_t> pairs(begin, begin + xcb_get_property_value_length(reply.get()) / 4);
        for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
            if (!convert(requestor, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
        }
        xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, requestor, property, _atoms.atomPair, 32,
                            static_cast<uint32_t>(pairs.size()), pairs.data());
        return true;
    }

    bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
        const std::lock_guard guard(_mutex);
        if (_offers.empty()) return false;
        if (target == _atoms.timestamp) {
            xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER, 32,
                                1, &_ownedSince);
            return true;
        }
        if (target == _atoms.targets) {
            std::vector<xcb_atom_t> known{_atoms.targets, _atoms.multiple, _atoms.timestamp};
            for (const auto& [one, bytes] : _offers)
                known.push_back(one);
            xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                                static_cast<uint32_t>(known.size()), known.data());
            return true;
        }
        const auto asked = std::find_if(_offers.begin(), _offers.end(),
                                        [&](const auto& one) { return one.first == target; });
        if (asked == _offers.end()) return false;
        send({requestor, property, target, asked->second, 0});
        return true;
    }

    void send(Transfer transfer) {
        if (transfer.bytes->size() <= largestPart) {
            sendPart(transfer);
            return;
        }
        const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(_connection, transfer.requestor, XCB_CW_EVENT_MASK, &events);
        const auto size = static_cast<uint32_t>(transfer.bytes->size());
        xcb_change_property(_connection, XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                            _atoms.incremental, 32, 1, &size);
        // Requestors that lost interest never end theirs.
        if (_transfers.size() == mostTransfers) _transfers.pop_front();
        _transfers.push_back(std::move(transfer));
    }

    xcb_connection_t* _connection;
    int _wake;
    xcb_window_t _window = XCB_WINDOW_NONE;
    Atoms _atoms{};
    std::atomic<bool> _isStopping = false;
    std::list<Transfer> _transfers;

    /// Guards what follows.
    std::mutex _mutex;
    std::condition_variable _changed;
    /// What there is of each target.
    std::vector<std::pair<xcb_atom_t, Bytes>> _offers;
    bool _wantsToOwn = false;
    bool _owns = false;
    xcb_timestamp_t _ownedSince = 0;
};

std::unique_ptr<X11Clipboard> X11Clipboard::connect() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Clipboard>(new X11Clipboard(std::make_unique<Server>(connection)));
}

X11Clipboard::X11Clipboard(std::unique_ptr<Server> server)
    : _server(std::move(server)), _thread([this] { _server->run(); }) {}

X11Clipboard::~X11Clipboard() {
    _server->stop();
    _thread.join();
}

bool X11Clipboard::offer(const std::string& text, std::optional<std::vector<uint8_t>> picture,
                         const std::string& file) {
    return _server->offer(text, std::move(picture), file);
}
