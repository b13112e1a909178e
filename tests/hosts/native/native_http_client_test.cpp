// Documents from a real server on this machine, which answers well, slowly, wrongly or without end.
// Whatever it does, the handler is called once, on the main thread.
#include "hosts/native/native_http_client.h"

#include <chrono>
#include <cstdlib>
#include <gmock/gmock.h>
#include <httplib.h>
#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>
#include <thread>

#include "platform/foundation/dispatch_queue.h"

namespace {

using std::chrono::milliseconds;
using Request = httplib::Request;
using Response = httplib::Response;

constexpr std::size_t largest = 1000;
constexpr const char* json = "application/json";

class NativeHTTPClientTest : public testing::Test {
  protected:
    NativeHTTPClientTest() {
        for (const char* proxy : {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY"})
            unsetenv(proxy);
        _server.Get("/good", [](const Request& request, Response& response) {
            response.set_content("{\"caches\": \"" + request.get_header_value("Cache-Control") + "\"}", json);
        });
        const auto answers = [this](const std::string& path, const std::string& data, const char* type,
                                    int status = 200) {
            _server.Get(path, [=](const Request&, Response& response) {
                response.status = status;
                response.set_content(data, type);
            });
        };
        answers("/full", std::string(largest, ' '), "application/octet-stream");
        answers("/longer", std::string(largest + 1, ' '), "application/octet-stream");
        // Small on its way, as bombs are.
        answers("/packed", std::string(10000000, ' '), json);
        _server.Get("/slow",
                    [](const Request&, Response&) { std::this_thread::sleep_for(milliseconds(800)); });
        answers("/500", "sorry", "text/plain", 500);
        _server.Get("/moved", [](const Request&, Response& response) { response.set_redirect("/good"); });
        _server.Get("/circle", [](const Request&, Response& response) { response.set_redirect("/circle"); });
        _server.Get("/file",
                    [](const Request&, Response& response) { response.set_redirect("file:///etc/passwd"); });
        _server.Get("/endless", [](const Request&, Response& response) {
            response.set_chunked_content_provider(
                json, [](std::size_t, httplib::DataSink& sink) { return sink.write("          ", 10); });
        });
        _server.Get("/cut", [](const Request&, Response& response) {
            response.set_content_provider(500, json,
                                          [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                              return offset == 0 && sink.write("half", 4);
                                          });
        });
        _port = _server.bind_to_any_port("127.0.0.1");
        _thread = std::thread([this] { _server.listen_after_bind(); });
        while (!_server.is_running())
            std::this_thread::yield();
    }
    ~NativeHTTPClientTest() override {
        _client.reset();
        _server.stop();
        _thread.join();
    }

    std::string address(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(_port) + path;
    }
    /// Waits for the one answer.
    HTTPAnswer get(const std::string& url, double timeout = 20) {
        HTTPAnswer received;
        int answers = 0;
        const auto main = std::this_thread::get_id();
        _client->get({url, timeout, largest}, [&](const HTTPAnswer& answer) {
            EXPECT_EQ(std::this_thread::get_id(), main);
            received = answer;
            ++answers;
        });
        EXPECT_EQ(answers, 0) << "not at once";
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (answers == 0 && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(milliseconds(1));
            DispatchQueue::mainQueue().drain();
        }
        EXPECT_EQ(answers, 1);
        return received;
    }

    std::unique_ptr<NativeHTTPClient> _client = std::make_unique<NativeHTTPClient>();
    httplib::Server _server;
    int _port = 0;
    std::thread _thread;
};

}  // namespace

TEST_F(NativeHTTPClientTest, AnswersOfAllKinds) {
    struct Case {
        std::string url;
        int status;
        int64_t error;  ///< 0 for none
        const char* data;
    };
    const Case cases[] = {
        {address("/good"), 200, 0, "{\"caches\": \"no-cache\"}"},
        {address("/moved"), 200, 0, "no-cache"},
        {address("/nowhere"), 404, 0, ""},
        {address("/500"), 500, 0, "sorry"},
        {address("/longer"), 200, NSURLErrorDataLengthExceedsMaximum, ""},
        {address("/packed"), 200, NSURLErrorDataLengthExceedsMaximum, ""},
        {address("/endless"), 200, NSURLErrorDataLengthExceedsMaximum, ""},
        {address("/cut"), 200, NSURLErrorUnknown, "half"},
        {address("/circle"), 302, NSURLErrorHTTPTooManyRedirects, ""},
        {address("/file"), 302, NSURLErrorUnknown, ""},
        {"file:///etc/passwd", 0, NSURLErrorUnknown, ""},
        {"no address", 0, NSURLErrorUnknown, ""},
        {"https://127.0.0.1:" + std::to_string(_port) + "/good", 0, NSURLErrorSecureConnectionFailed, ""},
        {"http://127.0.0.1:1/", 0, NSURLErrorCannotConnectToHost, ""},
        {"http://zentaro.invalid/", 0, NSURLErrorCannotFindHost, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.url);
        const HTTPAnswer answer = get(c.url);
        EXPECT_EQ(answer.statusCode, c.status);
        EXPECT_THAT(answer.data, testing::HasSubstr(c.data));
        EXPECT_LE(answer.data.size(), largest);
        EXPECT_EQ(answer.error ? answer.error->code() : 0, c.error);
        if (!answer.error) continue;
        EXPECT_EQ(answer.error->domain(), NSURLErrorDomain);
        EXPECT_NE(answer.error->localizedDescription(), "");
    }
    EXPECT_EQ(get(address("/full")).data.size(), largest);
}

TEST_F(NativeHTTPClientTest, SlowServersAreGivenUp) {
    const HTTPAnswer answer = get(address("/slow"), 0.1);
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->code(), NSURLErrorTimedOut);
}

TEST_F(NativeHTTPClientTest, TheAppEndsWhileAServerTakesItsTime) {
    _client->get({address("/endless"), 60, std::size_t{1} << 40U}, [](const HTTPAnswer&) {});
    const auto begun = std::chrono::steady_clock::now();
    _client.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(20));
    DispatchQueue::mainQueue().drain();
}

/// Signed by nobody but itself.
TEST_F(NativeHTTPClientTest, CertificatesAreVerified) {
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_RSA_gen(2048), EVP_PKEY_free);
    const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), X509_free);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key.get());
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("localhost"),
                               -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    ASSERT_GT(X509_sign(certificate.get(), key.get(), EVP_sha256()), 0);
    httplib::SSLServer server(certificate.get(), key.get());
    server.Get("/good", [](const Request&, Response& response) { response.set_content("{}", json); });
    const int port = server.bind_to_any_port("127.0.0.1");
    std::thread thread([&server] { server.listen_after_bind(); });
    const HTTPAnswer answer = get("https://localhost:" + std::to_string(port) + "/good");
    server.stop();
    thread.join();
    ASSERT_TRUE(answer.error);
    EXPECT_EQ(answer.error->code(), NSURLErrorSecureConnectionFailed);
    EXPECT_EQ(answer.data, "");
}
