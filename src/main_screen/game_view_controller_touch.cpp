// Touch: fingers, wheel, trackpad and keys that move and zoom the view, and the glides that follow them.
// Each of them takes the view away from the autopilot, unless it flies: then none of them counts.
#include <cmath>

#include "main_screen/game_view_controller.h"
#include "tween/easing.h"

namespace {

constexpr double glidePerSecond = 15;   // a glide covers what the finger would do in a 15th of a second
constexpr float speedOfTheGlide = 100;  // points per second that glide for a tenth of a second
constexpr double pinchGlide = 20;       // likewise, of the pinch's speed
constexpr float shortGlideSeconds = 0.1F;
constexpr double keyGlideSeconds = 0.2;
constexpr CGFloat keyStep = 0.1;  // of the view's side
constexpr CGFloat keyZoom = 1 / 0.8;

bool isOver(const UIGestureRecognizer& recognizer) {
    return recognizer.state() == UIGestureRecognizerState::ended ||
           recognizer.state() == UIGestureRecognizerState::cancelled;
}

/// Both sides `factor` times as long about the centre.
CGRect resized(CGRect r, CGFloat factor) {
    return CGRectInset(r, 0.5 * (r.size.width - factor * r.size.width),
                       0.5 * (r.size.height - factor * r.size.height));
}

/// As a pinch by `scale` does it: linear, so that 2 leaves nothing.
CGRect pinched(CGRect r, CGFloat scale) {
    return CGRectInset(r, 0.5 * (scale * r.size.width - r.size.width),
                       0.5 * (scale * r.size.height - r.size.height));
}

CGRect moved(CGRect r, float fx, float fy) {
    r.origin.x -= static_cast<double>(fx) * r.size.width;
    r.origin.y -= static_cast<double>(fy) * r.size.height;
    return r;
}

}  // namespace

void GameViewController::attachGestures() {
    const auto& main = view();
    main->addGestureRecognizer(
        std::make_shared<UIPinchGestureRecognizer>([this](UIPinchGestureRecognizer& r) { pinch(r); }));
    main->addGestureRecognizer(
        std::make_shared<UIPanGestureRecognizer>([this](UIPanGestureRecognizer& r) { pan(r); }));
    main->addGestureRecognizer(
        std::make_shared<UITapGestureRecognizer>([this](UIGestureRecognizer&) { togglePilot(nullptr); }));
    main->addGestureRecognizer(std::make_shared<UIMagnificationGestureRecognizer>(
        [this](UIMagnificationGestureRecognizer& r) { magnify(r); }));
}

void GameViewController::takeFromPilot() {
    stopTweens();
    _targets.clear();
}

void GameViewController::startGlide(CGRect goal, double seconds) {
    _glideGoal = goal;
    animtween = GSTween::tweenWithTarget(_shader, seconds, Cubic::easeOut(),
                                         {{"fractalBounds", NSStringFromCGRect(goal)},
                                          {"onComplete", GSTweenBlock([this, life = weak_from_this()] {
                                               if (!life.expired()) animtween = nullptr;
                                           })}});
}

void GameViewController::pan(UIPanGestureRecognizer& recognizer) {
    if (menuHiding) return;
    takeFromPilot();
    const UIView& main = *view();
    const double width = texture_width;
    const double height = texture_height;
    const double scale = static_cast<double>(interfaceScale);
    const CGPoint translation = recognizer.translationInView(main);
    recognizer.setTranslation(CGPointZero, main);
    const CGRect bounds = moved(_shader->fractalBounds(), static_cast<float>(translation.x / width / scale),
                                static_cast<float>(translation.y / height / scale));
    _shader->setFractalBounds(bounds);
    if (!isOver(recognizer)) return;

    const CGPoint v = recognizer.velocityInView(main);
    const auto gx = static_cast<float>(v.x / width / scale / glidePerSecond);
    const auto gy = static_cast<float>(v.y / height / scale / glidePerSecond);
    const float speed = std::sqrt(static_cast<float>(v.x * v.x + v.y * v.y));
    const float seconds = std::sqrt(speed / speedOfTheGlide) * 0.1F;
    startGlide(moved(bounds, gx, gy), static_cast<double>(seconds));
}

void GameViewController::pinch(UIPinchGestureRecognizer& recognizer) {
    if (menuHiding) return;
    const CGFloat scale = recognizer.scale();
    const CGRect bounds = pinched(_shader->fractalBounds(), scale);
    _shader->setFractalBounds(bounds);
    recognizer.setScale(1.0);
    takeFromPilot();
    if (!isOver(recognizer)) return;

    const auto velocity = static_cast<float>(recognizer.velocity());
    const auto carriedOn =
        static_cast<float>(recognizer.scale() * static_cast<double>(velocity) / pinchGlide);
    startGlide(pinched(bounds, scale + static_cast<double>(carriedOn)),
               static_cast<double>(shortGlideSeconds));
}

/// Notches that come before the last one's glide is over add up.
void GameViewController::magnify(UIMagnificationGestureRecognizer& recognizer) {
    if (menuHiding) return;
    const CGRect now = _shader->fractalBounds();
    const CGSize before = animtween ? _glideGoal.size : now.size;
    takeFromPilot();
    const CGRect area = view()->bounds();
    const CGPoint pointer = recognizer.locationInView(*view());
    const CGFloat u = pointer.x / area.size.width;
    const CGFloat v = pointer.y / area.size.height;
    const CGSize size{before.width / recognizer.factor(), before.height / recognizer.factor()};
    const CGRect goal =
        CGRectMake(now.origin.x + u * (now.size.width - size.width),
                   now.origin.y + v * (now.size.height - size.height), size.width, size.height);
    if (recognizer.isInNotches()) return startGlide(goal, static_cast<double>(shortGlideSeconds));
    _shader->setFractalBounds(goal);
}

/// dx, dy: parts of the view's sides.
void GameViewController::glideBy(CGFloat dx, CGFloat dy) {
    takeFromPilot();
    const CGRect now = _shader->fractalBounds();
    startGlide(CGRectOffset(now, dx * now.size.width, dy * now.size.height), keyGlideSeconds);
}

void GameViewController::glideZoom(CGFloat factor) {
    takeFromPilot();
    startGlide(resized(_shader->fractalBounds(), 1 / factor), keyGlideSeconds);
}

void GameViewController::moveLeft(Sender) {
    glideBy(-keyStep, 0);
}

void GameViewController::moveRight(Sender) {
    glideBy(keyStep, 0);
}

void GameViewController::moveUp(Sender) {
    glideBy(0, -keyStep);
}

void GameViewController::moveDown(Sender) {
    glideBy(0, keyStep);
}

void GameViewController::zoomIn(Sender) {
    glideZoom(keyZoom);
}

void GameViewController::zoomOut(Sender) {
    glideZoom(1 / keyZoom);
}
