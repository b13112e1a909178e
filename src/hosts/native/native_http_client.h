// The network for hosts on a machine with threads: each request waits on one of its own.
// The library that speaks HTTP is loaded with the first of them.
#pragma once

#include <stop_token>

#include "hosts/native/background_work.h"
#include "platform/host/http_client.h"

/// What the module answers requests with; blocks, until the answer is there or a stop is requested.
using HTTPFetch = HTTPAnswer (*)(const HTTPRequest& request, const std::stop_token& stop);

class NativeHTTPClient : public HTTPClient {
  public:
    void get(const HTTPRequest& request, Handler handler) override;

  private:
    BackgroundWork _requests;
};
