// The list of display links and what keeps it whole while its own links change it.
// Tweens start and stop one another from inside their steps.
#include "platform/foundation/ca_display_link.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/ns_log.h"

void CADisplayLink::addToRunLoop(NSRunLoop& loop) {
    if (isInvalidated() || _loop) return;
    _loop = &loop;
    loop._links.push_back(shared_from_this());
}

void CADisplayLink::invalidate() {
    const auto self = shared_from_this();
    if (_loop) _loop->remove(*this);
    _block.reset();
}

double CADisplayLink::duration() const {
    return _loop ? _loop->frameInterval() : NSRunLoop::defaultRefreshInterval;
}

void CADisplayLink::fire(double timestamp) {
    const auto block = _block;
    _timestamp = timestamp;
    (*block)(*this);
}

NSRunLoop& NSRunLoop::currentRunLoop() {
    static NSRunLoop loop;
    return loop;
}

void NSRunLoop::fireDisplayLinks(double timestamp) {
    _isFiring = true;
    const std::size_t count = _links.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (const auto link = _links[i]) link->fire(timestamp);
    }
    _isFiring = false;
    std::erase(_links, nullptr);
}

void NSRunLoop::remove(const CADisplayLink& link) {
    const auto place =
        std::find_if(_links.begin(), _links.end(), [&link](const auto& each) { return each.get() == &link; });
    if (place == _links.end()) return;
    if (_isFiring) {
        place->reset();
    } else {
        _links.erase(place);
    }
}

void NSRunLoop::invalidateDisplayLinks() {
    const auto links = _links;
    for (const auto& link : links) {
        if (link) link->invalidate();
    }
}

std::size_t NSRunLoop::displayLinkCount() const {
    return _links.size() - static_cast<std::size_t>(std::count(_links.begin(), _links.end(), nullptr));
}

void NSRunLoop::setRefreshInterval(double seconds) {
    if (!std::isfinite(seconds) || seconds <= 0) {
        NSLog("impossible refresh interval of %g s: ignored", seconds);
        return;
    }
    _refreshInterval = seconds;
}
