// Runs a program and listens to it: for tests and benchmarks of the executable as the user starts it.
// The program is killed with its object, so that a failing test leaves nothing behind.
#pragma once

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

class ChildProcess {
  public:
    /// A variable of the program's environment; nothing removes it.
    using Variable = std::pair<std::string, std::optional<std::string>>;

    explicit ChildProcess(const std::vector<std::string>& command,
                          const std::vector<Variable>& environment = {}, const std::string& folder = {}) {
        std::array<int, 2> out{};
        std::array<int, 2> err{};
        if (pipe2(out.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) std::abort();
        _pid = fork();
        if (_pid == 0) become(command, environment, folder, out[1], err[1]);
        close(out[1]);
        close(err[1]);
        _pipes = {out[0], err[0]};
    }
    ~ChildProcess() {
        if (!_status && _pid > 0) {
            kill(_pid, SIGKILL);
            waitpid(_pid, nullptr, 0);
        }
        for (const int one : _pipes) {
            if (one >= 0) close(one);
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return _pid; }
    void signal(int number) const { kill(_pid, number); }
    /// What it wrote so far, as far as it was listened to.
    const std::string& out() const { return _text[0]; }
    const std::string& err() const { return _text[1]; }

    /// Listens until the text was written to either stream; NO if the program ends or the time runs out
    /// first.
    bool waitForText(const std::string& text, double seconds) {
        return listen(seconds, [&] {
            return _text[0].find(text) != std::string::npos || _text[1].find(text) != std::string::npos;
        });
    }

    /// Listens until its first line of output is there; nothing if the program ends or the time runs out
    /// first.
    std::optional<std::string> firstLine(double seconds) {
        if (!listen(seconds, [&] { return _text[0].find('\n') != std::string::npos; })) return std::nullopt;
        return _text[0].substr(0, _text[0].find('\n'));
    }

    /// Its exit status, 128 plus the number of the signal that ended it, or nothing if it runs on.
    std::optional<int> wait(double seconds) {
        listen(seconds, [] { return false; });
        const auto end = Clock::now() + std::chrono::duration<double>(1);
        while (!_status && _pipes[0] < 0 && _pipes[1] < 0) {
            int status = 0;
            if (waitpid(_pid, &status, WNOHANG) == _pid) {
                _status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            } else if (Clock::now() > end) {
                break;
            } else {
                usleep(1000);
            }
        }
        return _status;
    }

  private:
    using Clock = std::chrono::steady_clock;

    [[noreturn]] static void become(const std::vector<std::string>& command,
                                    const std::vector<Variable>& environment, const std::string& folder,
                                    int out, int err) {
        // A test that crashes kills nobody; the kernel does.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        for (const auto& [name, value] : environment) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
        std::vector<char*> words;
        for (const auto& word : command)
            words.push_back(const_cast<char*>(word.c_str()));
        words.push_back(nullptr);
        if (folder.empty() || chdir(folder.c_str()) == 0) execvp(words[0], words.data());
        _exit(127);
    }

    template <typename Enough>
    bool listen(double seconds, const Enough& enough) {
        const auto end = Clock::now() +
                         std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        while (!enough()) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
            if (left < 0 || (_pipes[0] < 0 && _pipes[1] < 0)) return false;
            std::array<pollfd, 2> waiting{{{_pipes[0], POLLIN, 0}, {_pipes[1], POLLIN, 0}}};
            if (poll(waiting.data(), waiting.size(), static_cast<int>(left) + 1) <= 0) continue;
            for (std::size_t i = 0; i < waiting.size(); ++i) {
                if (waiting[i].revents != 0) read(i);
            }
        }
        return true;
    }

    void read(std::size_t which) {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(_pipes[which], bytes.data(), bytes.size());
        if (count > 0) {
            _text[which].append(bytes.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            close(_pipes[which]);
            _pipes[which] = -1;
        }
    }

    pid_t _pid = -1;
    std::array<int, 2> _pipes{-1, -1};
    std::array<std::string, 2> _text;
    std::optional<int> _status;
};
