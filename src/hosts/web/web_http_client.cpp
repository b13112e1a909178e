// Requests go to web/network.js.
// The page keeps an answer's bytes until they have been fetched from it.
#include "hosts/web/web_http_client.h"

#include <utility>

#include "hosts/web/web_page.h"
#include "platform/foundation/dispatch_queue.h"

void WebHTTPClient::get(const HTTPRequest& request, Handler handler) {
    const int number = ++_lastNumber;
    _handlers[number] = std::move(handler);
    WebPage::fetchDocument(number, request.url, request.timeout, request.largestBody);
}

void WebHTTPClient::answered(int number, int statusCode, int64_t errorCode, const std::string& reason,
                             std::size_t size) {
    HTTPAnswer answer;
    answer.statusCode = statusCode;
    answer.data.resize(size);
    if (size > 0) WebPage::fetchedBytes(number, answer.data);
    if (errorCode != 0) answer.error = std::make_shared<NSError>(NSURLErrorDomain, errorCode, reason);
    const auto waiting = _handlers.extract(number);
    if (waiting.empty()) return;
    DispatchQueue::mainQueue().async(
        [handler = waiting.mapped(), answer = std::move(answer)] { handler(answer); });
}
