// A link from one process to another: both ends in one process here, then what may go wrong between them.
// Everything has to end by itself, with whatever there is at the other end.
#include "hosts/desktop/link_socket.h"

#include <fcntl.h>
#include <filesystem>
#include <future>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class LinkSocketTest : public testing::Test {
  protected:
    std::future<HandOver> give(std::string link) {
        return std::async(std::launch::async,
                          [this, link = std::move(link)] { return handLinkOver(_place, link, 5s); });
    }
    /// What arrives until the giver is done.
    static std::vector<std::string> takeUntilDone(LinkSocket& socket, std::future<HandOver>& giver) {
        std::vector<std::string> links;
        do {
            for (auto& link : socket.take())
                links.push_back(std::move(link));
        } while (giver.wait_for(1ms) != std::future_status::ready);
        return links;
    }
    sockaddr_un address() const {
        sockaddr_un result{};
        result.sun_family = AF_UNIX;
        (_place + "/links").copy(result.sun_path, sizeof result.sun_path - 1);
        return result;
    }
    /// A giver of its own kind.
    Descriptor connectBare() const {
        Descriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const sockaddr_un place = address();
        EXPECT_EQ(connect(connection.number(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        return connection;
    }

    TemporaryFolder _folder;
    std::string _place = _folder.file("");
};

TEST_F(LinkSocketTest, ALinkArrivesWhole) {
    LinkSocket socket(_place);
    EXPECT_THAT(socket.take(), IsEmpty());
    for (const std::string& link : {std::string("/julia/0/0/1/1"), std::string(130000, 'x'), std::string()}) {
        auto giver = give(link);
        EXPECT_THAT(takeUntilDone(socket, giver), ElementsAre(link));
        EXPECT_EQ(giver.get(), HandOver::taken);
    }
    struct stat info {};
    ASSERT_EQ(lstat((_place + "/links").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0600U);
}

TEST_F(LinkSocketTest, NobodyThere) {
    EXPECT_EQ(handLinkOver(_place, "x", 5s), HandOver::nobody);
    EXPECT_EQ(handLinkOver(_folder.file("absent"), "x", 5s), HandOver::nobody);
    EXPECT_EQ(handLinkOver(_folder.file(std::string(200, 'x')), "x", 5s), HandOver::nobody);
    LinkSocket(_folder.file(std::string(200, 'x'))).take();
    LinkSocket("").take();
    { LinkSocket(_place).take(); }
    EXPECT_FALSE(std::filesystem::exists(_place + "/links"));
    EXPECT_EQ(handLinkOver(_place, "x", 5s), HandOver::nobody);
}

/// As a crash leaves it: a socket that nobody holds.
TEST_F(LinkSocketTest, AStaleOneIsReplaced) {
    {
        const Descriptor dead(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const sockaddr_un place = address();
        ASSERT_EQ(bind(dead.number(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    }
    EXPECT_EQ(handLinkOver(_place, "x", 5s), HandOver::nobody);
    LinkSocket socket(_place);
    socket.take();
    auto giver = give("x");
    EXPECT_THAT(takeUntilDone(socket, giver), ElementsAre("x"));
    EXPECT_EQ(giver.get(), HandOver::taken);
}

TEST_F(LinkSocketTest, OneThatIsStuckHoldsNobodyUp) {
    LinkSocket socket(_place);
    socket.take();
    EXPECT_EQ(handLinkOver(_place, "x", 50ms), HandOver::stuck);
    EXPECT_EQ(handLinkOver(_place, std::string(10000000, 'x'), 50ms), HandOver::stuck);
    EXPECT_THAT(socket.take(), IsEmpty()) << "their givers opened them elsewhere";
}

/// The first one keeps the place while it lives; whoever is there when it goes takes over.
TEST_F(LinkSocketTest, AnotherTakesOver) {
    auto first = std::make_unique<LinkSocket>(_place);
    first->take();
    LinkSocket second(_place);
    second.take();
    auto giver = give("to the first");
    EXPECT_THAT(takeUntilDone(*first, giver), ElementsAre("to the first"));
    first = nullptr;
    std::this_thread::sleep_for(2100ms);
    second.take();
    giver = give("to the second");
    EXPECT_THAT(takeUntilDone(second, giver), ElementsAre("to the second"));
}

/// Givers that say nothing, too much, or leave in the middle: the next one is served all the same.
TEST_F(LinkSocketTest, OddGiversAreLeft) {
    LinkSocket socket(_place);
    socket.take();
    std::vector<Descriptor> silent;
    for (int i = 0; i < 8; ++i)
        silent.push_back(connectBare());
    {
        const Descriptor leaves = connectBare();
        EXPECT_EQ(write(leaves.number(), "half a li", 9), 9);
    }
    const Descriptor floods = connectBare();
    fcntl(floods.number(), F_SETFL, O_NONBLOCK);
    const std::string flood(100000, 'x');
    for (int i = 0; i < 40; ++i) {
        EXPECT_THAT(socket.take(), IsEmpty());
        if (send(floods.number(), flood.data(), flood.size(), MSG_NOSIGNAL) < 0 && errno == EPIPE) break;
        EXPECT_LT(i, 39) << "it is listened to for ever";
    }
    auto giver = give("x");
    EXPECT_THAT(takeUntilDone(socket, giver), ElementsAre("x"));
}

TEST_F(LinkSocketTest, OnlyAFolderOfTheUsersOwnWillDo) {
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", _place);
    const auto folder = linkSocketFolder();
    ASSERT_TRUE(folder);
    struct stat info {};
    ASSERT_EQ(stat(folder->c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0700U);
    chmod(folder->c_str(), 0777);
    EXPECT_EQ(linkSocketFolder(), std::nullopt) << "others may write to it";
    std::filesystem::remove(*folder);
    std::filesystem::create_directory_symlink(_folder.file("elsewhere"), *folder);
    EXPECT_EQ(linkSocketFolder(), std::nullopt) << "a link to another place";
}

}  // namespace
