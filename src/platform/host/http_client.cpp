// Holds the client of this run.
// Whoever asks the network finds it here.
#include "platform/host/http_client.h"

#include <utility>

namespace {

std::shared_ptr<HTTPClient>& slot() {
    static std::shared_ptr<HTTPClient> client;
    return client;
}

}  // namespace

std::shared_ptr<HTTPClient> sharedHTTPClient() {
    return slot();
}

void setSharedHTTPClient(std::shared_ptr<HTTPClient> client) {
    slot() = std::move(client);
}
