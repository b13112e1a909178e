// One thread a request.
// A module that cannot be loaded is a network that cannot be reached.
#include "hosts/native/native_http_client.h"

#include <utility>

#include "hosts/native/program_module.h"

namespace {

HTTPAnswer fetch(const HTTPRequest& request, const std::stop_token& stop) {
    std::string error;
    void* entry = programModuleEntry("zentaro_http.so", "zentaroHTTPFetch", error);
    if (entry) return reinterpret_cast<HTTPFetch>(entry)(request, stop);
    HTTPAnswer answer;
    answer.error = std::make_shared<NSError>(NSURLErrorDomain, NSURLErrorUnknown, error);
    return answer;
}

}  // namespace

void NativeHTTPClient::get(const HTTPRequest& request, Handler handler) {
    _requests.run([request, handler = std::move(handler)](const std::stop_token& stop) {
        return [handler, answer = fetch(request, stop)] { handler(answer); };
    });
}
