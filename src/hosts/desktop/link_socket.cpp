// A link is one line; the answer is one as well, so that the giver knows that it was read.
// Only processes of the same user are listened to.
#include "hosts/desktop/link_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t longestLink = 1 << 18;  // above the longest argument that a program can get
constexpr std::size_t mostGivers = 16;
constexpr std::string_view answer = "taken\n";
constexpr auto betweenTries = std::chrono::seconds(2);
constexpr auto patienceWithGivers = std::chrono::seconds(2);

/// Makes it if need be. A folder under /tmp may have been put there by anybody.
bool isOwnFolder(const std::string& path) {
    mkdir(path.c_str(), S_IRWXU);
    struct stat info {};
    return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid() &&
           (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

/// Nothing for a path that is too long for a socket.
std::optional<sockaddr_un> addressIn(const std::string& folder) {
    const std::string path = folder + "/links";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (folder.empty() || path.size() >= sizeof address.sun_path) return std::nullopt;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

Descriptor makeSocket() {
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

bool isOwnProcess(const Descriptor& connection) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(connection.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

/// Until the socket is ready or the time is up.
bool waitUntilReady(const Descriptor& connection, short events, Clock::time_point end) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left < 0) return false;
        pollfd waiting{connection.number(), events, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(left) + 1);
        if (ready > 0) return true;
        if (ready < 0 && errno != EINTR) return false;
    }
}

bool sendAll(const Descriptor& connection, std::string_view text, Clock::time_point end) {
    while (!text.empty()) {
        if (!waitUntilReady(connection, POLLOUT, end)) return false;
        const ssize_t count = send(connection.number(), text.data(), text.size(), MSG_NOSIGNAL);
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR && errno != EAGAIN) {
            return false;
        }
    }
    return true;
}

bool isAnswered(const Descriptor& connection, Clock::time_point end) {
    std::array<char, answer.size()> said{};
    std::size_t length = 0;
    while (length < said.size()) {
        if (!waitUntilReady(connection, POLLIN, end)) return false;
        const ssize_t count = recv(connection.number(), said.data() + length, said.size() - length, 0);
        if (count > 0) {
            length += static_cast<std::size_t>(count);
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            return false;
        }
    }
    return std::string_view(said.data(), said.size()) == answer;
}

}  // namespace

Descriptor::~Descriptor() {
    if (_number >= 0) close(_number);
}

Descriptor::Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(_number, other._number);
    return *this;
}

std::optional<std::string> linkSocketFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string folder = runtime != nullptr && runtime[0] == '/'
                                   ? std::string(runtime) + "/zentaro"
                                   : "/tmp/zentaro-" + std::to_string(geteuid());
    return isOwnFolder(folder) ? std::optional(folder) : std::nullopt;
}

HandOver handLinkOver(const std::string& folder, std::string_view link, std::chrono::milliseconds patience) {
    const auto end = Clock::now() + patience;
    const auto address = addressIn(folder);
    const Descriptor connection = makeSocket();
    if (!address || !connection) return HandOver::nobody;
    if (connect(connection.number(), generic(*address), sizeof *address) != 0) {
        // A full queue is somebody's who does not look at it.
        return errno == EAGAIN ? HandOver::stuck : HandOver::nobody;
    }
    if (!isOwnProcess(connection)) return HandOver::nobody;
    const bool taken = sendAll(connection, std::string(link) + "\n", end) && isAnswered(connection, end);
    return taken ? HandOver::taken : HandOver::stuck;
}

LinkSocket::~LinkSocket() {
    const auto address = addressIn(_folder);
    if (_socket && address && isLockInPlace()) unlink(address->sun_path);
}

/// Whoever cleans the folder up makes room for another owner.
bool LinkSocket::isLockInPlace() const {
    struct stat held {};
    struct stat there {};
    return fstat(_lock.number(), &held) == 0 && stat((_folder + "/lock").c_str(), &there) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

std::vector<std::string> LinkSocket::take() {
    const auto now = Clock::now();
    if (!_socket && now >= _nextTry) {
        _nextTry = now + betweenTries;
        listen();
    }
    std::vector<std::string> links;
    if (!_socket) return links;
    greet(now);
    std::erase_if(_givers, [&](Giver& giver) { return !read(giver, links) || now > giver.deadline; });
    return links;
}

void LinkSocket::listen() {
    const auto address = addressIn(_folder);
    if (!address) return;
    Descriptor lock(open((_folder + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock || flock(lock.number(), LOCK_EX | LOCK_NB) != 0) return;
    // With the lock in hand, whatever lies in the place is a dead process's.
    unlink(address->sun_path);
    Descriptor socket = makeSocket();
    if (!socket || bind(socket.number(), generic(*address), sizeof *address) != 0) return;
    if (chmod(address->sun_path, S_IRUSR | S_IWUSR) != 0 || ::listen(socket.number(), mostGivers) != 0)
        return;
    _lock = std::move(lock);
    _socket = std::move(socket);
}

void LinkSocket::greet(Clock::time_point now) {
    while (_givers.size() < mostGivers) {
        Descriptor connection(accept4(_socket.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!connection) return;
        if (isOwnProcess(connection))
            _givers.push_back({std::move(connection), now + patienceWithGivers, {}});
    }
}

bool LinkSocket::read(Giver& giver, std::vector<std::string>& links) {
    std::array<char, 4096> bytes{};
    for (;;) {
        const ssize_t count = recv(giver.connection.number(), bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno == EAGAIN;
        if (count == 0) return false;
        giver.text.append(bytes.data(), static_cast<std::size_t>(count));
        const auto end = giver.text.find('\n');
        if (end != std::string::npos) {
            // One that gave up has opened the link itself.
            const ssize_t sent = send(giver.connection.number(), answer.data(), answer.size(), MSG_NOSIGNAL);
            if (sent == static_cast<ssize_t>(answer.size())) links.push_back(giver.text.substr(0, end));
            return false;
        }
        if (giver.text.size() > longestLink) return false;
    }
}
