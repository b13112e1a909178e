// Pilot: flight after flight while the menu is hidden, each into a tenth of the view, and home where nothing
// is left to see. In snapshot mode the pilot's button steps through fixed places instead.
#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "main_screen/game_view_controller.h"
#include "platform/foundation/ns_log.h"
#include "tween/easing.h"

namespace {

constexpr double flightSeconds = 5.0;
constexpr std::size_t targetsPerSampling = 10;
constexpr std::size_t mostTargets = 50;

struct SnapshotSpot {
    float x1, y1, x2, y2;
    int32_t fracType;
    int32_t color;
};

/// By the counter; the first stands for every value outside as well.
constexpr std::array<SnapshotSpot, 7> snapshotSpots{{
    {0.002425F, 0.819905F, 0.002799F, 0.820115F, 1, 1},
    {-1.395334F, 0.112367F, -1.394592F, 0.112785F, 2, 1},
    {-0.803327F, 0.178014F, -0.803189F, 0.178092F, 1, 1},
    {-0.830664F, -0.207255F, -0.830375F, -0.207092F, 1, 6},
    {-1.385612F, -0.026382F, -1.385493F, -0.026315F, 1, 6},
    {-1.386491F, 0.008746F, -1.354271F, 0.026897F, 2, 6},
    {-1.256196F, -0.034824F, -1.256094F, -0.034767F, 1, 10},
}};

int32_t snapshotCounter = 0;

/// A tween's end clears the field that holds it, so the field lets go first.
void stopAndClear(std::shared_ptr<GSTween>& field) {
    if (const auto running = std::exchange(field, nullptr)) running->stop();
}

}  // namespace

void GameViewController::update() {
    const std::lock_guard guard(_lock);
    if (!menuHiding || tween || isTutorialRunning()) return;
    _targets.reserve(mostTargets + targetsPerSampling);
    sampleFrame();
    for (std::size_t i = 0; i < targetsPerSampling; ++i)
        addNewTarget();
    const Flight flight = chooseFlight();
    if (_flightObserver) _flightObserver(flight);
    tweenTo(flight.to);
}

GameViewController::Flight GameViewController::chooseFlight() {
    if (_targets.empty()) {
        NSLog("no targets, bouncing back to top");
        return flightHome(Bounce::noTargets);
    }
    shuffle(_targets, RandomSource::shared());
    if (_targets.size() > mostTargets) _targets.resize(mostTargets);
    const FractalBounds here = _shader->fractalBounds();
    if (const auto target = takeGoodTarget(_targets, here)) return {here, *target, Bounce::none};
    _targets.clear();
    NSLog("no GOOD targets for HERE, bouncing back to top");
    return flightHome(Bounce::noGoodTargets);
}

GameViewController::Flight GameViewController::flightHome(Bounce why) const {
    return {_shader->fractalBounds(), rectifiedBoundsFor(sourceBounds), why};
}

void GameViewController::tweenTo(FractalBounds destination) {
    stopTweens();
    NSLog("%s", coordinatesForDeeplink(destination).c_str());
    // Nothing leads back from infinity, where long zooming ends.
    if (!isFinite(_shader->fractalBounds())) _shader->setFractalBounds(destination);
    tween = GSTween::tweenWithTarget(_shader, flightSeconds, Sine::easeOut(),
                                     {{"fractalBounds", NSStringFromCGRect(destination)},
                                      {"onComplete", GSTweenBlock([this, life = weak_from_this()] {
                                           if (!life.expired()) tween = nullptr;
                                       })}});
}

void GameViewController::stopTweens() {
    stopAndClear(tween);
    stopAndClear(animtween);
    tellStateOfFlight();
}

void GameViewController::togglePilot(Sender) {
    if (snapshots) {
        jumpToNextSnapshotSpot();
    } else if (menuHiding) {
        if (tween) tween->pause();
        showMenu(true);
    } else {
        hideMenu(true);
        if (tween) tween->resume();
    }
}

void GameViewController::jumpToNextSnapshotSpot() {
    const bool listed = snapshotCounter > 0 && snapshotCounter < static_cast<int32_t>(snapshotSpots.size());
    const SnapshotSpot& spot = snapshotSpots[listed ? static_cast<std::size_t>(snapshotCounter) : 0];
    jumpTox1(spot.x1, spot.y1, spot.x2, spot.y2, spot.fracType, spot.color);
    NSLog("----- ***** SNAPSHOT %d", snapshotCounter);
    ++snapshotCounter;
}
