// One document by HTTP, through libcurl: certificates are verified, redirections followed, nothing cached.
// A module by itself: the library's own libraries would otherwise be loaded with every start of the app.
#include <curl/curl.h>
#include <memory>

#include "hosts/native/native_http_client.h"

namespace {

constexpr long mostRedirections = 5;

struct Reception {
    HTTPAnswer& answer;
    std::size_t largest = 0;
    const std::stop_token& stop;
    bool isTooLong = false;
};

std::size_t receive(const char* bytes, std::size_t, std::size_t count, void* to) {
    Reception& reception = *static_cast<Reception*>(to);
    reception.isTooLong = count > reception.largest - reception.answer.data.size();
    if (reception.isTooLong) return 0;
    reception.answer.data.append(bytes, count);
    return count;
}

int goOn(void* asked, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    return static_cast<const Reception*>(asked)->stop.stop_requested() ? 1 : 0;
}

int64_t errorCode(CURLcode code) {
    switch (code) {
        case CURLE_OPERATION_TIMEDOUT:
            return NSURLErrorTimedOut;
        case CURLE_COULDNT_RESOLVE_HOST:
            return NSURLErrorCannotFindHost;
        case CURLE_COULDNT_CONNECT:
            return NSURLErrorCannotConnectToHost;
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CONNECT_ERROR:
            return NSURLErrorSecureConnectionFailed;
        case CURLE_TOO_MANY_REDIRECTS:
            return NSURLErrorHTTPTooManyRedirects;
        default:
            return NSURLErrorUnknown;
    }
}

NSErrorRef errorOf(CURLcode code, const Reception& reception, const char* words) {
    if (code == CURLE_OK) return nullptr;
    if (reception.isTooLong) {
        return std::make_shared<NSError>(
            NSURLErrorDomain, NSURLErrorDataLengthExceedsMaximum,
            "The answer is longer than " + std::to_string(reception.largest) + " bytes");
    }
    return std::make_shared<NSError>(NSURLErrorDomain, errorCode(code),
                                     *words ? words : curl_easy_strerror(code));
}

void ask(CURL* curl, const HTTPRequest& request, Reception& reception) {
    curl_easy_setopt(curl, CURLOPT_URL, request.url.c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    // Who asked with certificates gets no answer without.
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR,
                     request.url.starts_with("https:") ? "https" : "http,https");
    // The end of the app waits for no name server.
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, mostRedirections);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(request.timeout * 1000));
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, receive);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &reception);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, goOn);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &reception);
}

struct Closer {
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

}  // namespace

extern "C" [[gnu::visibility("default")]] HTTPAnswer zentaroHTTPFetch(const HTTPRequest& request,
                                                                      const std::stop_token& stop) {
    static const CURLcode global = curl_global_init(CURL_GLOBAL_DEFAULT);
    HTTPAnswer answer;
    Reception reception{answer, request.largestBody, stop};
    const std::unique_ptr<CURL, Closer> curl(global == CURLE_OK ? curl_easy_init() : nullptr);
    if (!curl) {
        answer.error = errorOf(CURLE_FAILED_INIT, reception, "");
        return answer;
    }
    char words[CURL_ERROR_SIZE] = {};
    const std::unique_ptr<curl_slist, Closer> headers(curl_slist_append(nullptr, "Cache-Control: no-cache"));
    ask(curl.get(), request, reception);
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, words);
    curl_easy_setopt(curl.get(), CURLOPT_HTTPHEADER, headers.get());
    const CURLcode code = curl_easy_perform(curl.get());
    long status = 0;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
    answer.statusCode = static_cast<int>(status);
    answer.error = errorOf(code, reception, words);
    return answer;
}
