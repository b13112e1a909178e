// Holds the codec of this run.
// A host without one simply offers no picture files.
#include "platform/host/image_codec.h"

#include <utility>

namespace {
std::shared_ptr<ImageCodec>& shared() {
    static std::shared_ptr<ImageCodec> codec;
    return codec;
}
}  // namespace

std::shared_ptr<ImageCodec> sharedImageCodec() {
    return shared();
}

void setSharedImageCodec(std::shared_ptr<ImageCodec> codec) {
    shared() = std::move(codec);
}
