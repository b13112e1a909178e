// Host contract: small documents from the network.
// One request, one answer; nothing is cached and nothing blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/foundation/ns_error.h"

inline constexpr const char* NSURLErrorDomain = "NSURLErrorDomain";
enum NSURLErrorCode : int64_t {
    NSURLErrorUnknown = -1,
    NSURLErrorTimedOut = -1001,
    NSURLErrorCannotFindHost = -1003,
    NSURLErrorCannotConnectToHost = -1004,
    NSURLErrorHTTPTooManyRedirects = -1007,
    NSURLErrorNotConnectedToInternet = -1009,
    NSURLErrorDataLengthExceedsMaximum = -1103,
    NSURLErrorSecureConnectionFailed = -1200,
};

struct HTTPRequest {
    std::string url;
    /// Seconds, from the call to the whole answer.
    double timeout = 60;
    /// Bytes; a longer answer is refused as soon as that shows.
    std::size_t largestBody = std::size_t{1} << 20U;
};

struct HTTPAnswer {
    /// Of the server, after its redirections; 0 where none answered.
    int statusCode = 0;
    std::string data;
    /// Why there is no answer, or none that is whole; empty for one with any status.
    NSErrorRef error;
};

class HTTPClient {
  public:
    using Handler = std::function<void(const HTTPAnswer& answer)>;

    virtual ~HTTPClient() = default;
    /// Asks past all caches. The handler is called once, on the main thread, with a later frame.
    virtual void get(const HTTPRequest& request, Handler handler) = 0;
};

/// The client of this run; the host sets it at start. Null where there is no network.
std::shared_ptr<HTTPClient> sharedHTTPClient();
void setSharedHTTPClient(std::shared_ptr<HTTPClient> client);
