// The network through the browser's fetch, which waits beside the app.
// Answers come by number; servers elsewhere must allow pages to ask them.
#pragma once

#include <map>
#include <string>

#include "platform/host/http_client.h"

class WebHTTPClient : public HTTPClient {
  public:
    void get(const HTTPRequest& request, Handler handler) override;

    /// The page has an answer of that size, or the reason why there is none: an NSURLErrorCode, 0 for an
    /// answer with any status.
    void answered(int number, int statusCode, int64_t errorCode, const std::string& reason, std::size_t size);

  private:
    std::map<int, Handler> _handlers;
    int _lastNumber = 0;
};
