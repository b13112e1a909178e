// Drawing: the GL context, the frame, pictures of it, and what goes when memory is short.
// The clear colour is magenta on purpose: it shows wherever the program drew nothing.
#include "main_screen/game_view_controller.h"
#include "main_screen/pictured_place.h"
#include "platform/foundation/ns_log.h"

namespace {

constexpr double sharedJPEGQuality = 0.9;
constexpr int32_t framesSkippedInSnapshotMode = 60;
int32_t framesSkipped = 0;

}  // namespace

void GameViewController::makeContext() {
    _context = EAGLContext::initWithAPI(kEAGLRenderingAPIOpenGLES2);
    EAGLContext::setCurrentContext(_context);
    if (!_context) NSLog("Failed to create ES context");
}

void GameViewController::setUpGL() {
    makeContext();
    if (const auto view = glkView()) {
        view->setContext(_context);
        view->setDelegate(this);
        view->setDrawableDepthFormat(GLKViewDrawableDepthFormatNone);
        view->setDrawableColorFormat(GLKViewDrawableColorFormatRGB565);
    }
    glClearColor(1, 0, 1, 1);
    _shader = RWTBaseShader::initWithVertexShader(
        "Shader", "Shader", _textureBuffer.get(),
        CGSizeMake(static_cast<double>(texture_width), static_cast<double>(texture_height)));
}

void GameViewController::glkViewDrawInRect(GLKView& view, CGRect rect) {
    if (snapshots) {
        if (framesSkipped < framesSkippedInSnapshotMode) {
            ++framesSkipped;
            return;
        }
        framesSkipped = 0;
    }
    // The first frame does not wait for what only deep views need.
    if (timeSinceFirstResume() > 0) _shader->prepareForDeepViews(rect);
    _shader->setReducedSize(view.reducedSize());
    _shader->renderInRect(rect, timeSinceFirstResume());
    adaptDrawableScale(view);
    if (_developerOverlay) _developerOverlay->noteFrame(_shader->frameCost());
}

/// Snapshots are drawn at full scale whatever the screen's is, and say nothing about that.
void GameViewController::adaptDrawableScale(GLKView& view) {
    const bool isReduced = view.reducedSize().width > 0;
    if (isReduced != (_drawableScale.factor() < 1)) return;
    const auto dwell = static_cast<double>(_shader->dwell());
    using enum DrawableScale::Limit;
    const auto limit = dwell <= RWTBaseShader::dwellFloor     ? atFloor
                       : dwell >= RWTBaseShader::dwellCeiling ? atCeiling
                                                              : between;
    _drawableScale.noteFrame(static_cast<double>(_shader->frameCost()), limit);
    view.setDrawableScale(_drawableScale.factor());
}

UIImageRef GameViewController::renderedImage() {
    const auto view = glkView();
    const UIImageRef snapshot = view ? view->snapshot() : nullptr;
    return snapshot ? UIImage::imageWithCGImage(snapshot->image(), pictureTexts()) : nullptr;
}

PictureTexts GameViewController::pictureTexts() const {
    const CGRect bounds = _shader->fractalBounds();
    return textsOfPlace({_fractalType, bounds, _shader->fractalColoring()}, coordinatesForDeeplink(bounds));
}

std::optional<NSData> GameViewController::imageAsJPEG(const UIImageRef& image) const {
    return UIImageJPEGRepresentation(image, sharedJPEGQuality);
}

std::optional<NSData> GameViewController::imageAsPNG(const UIImageRef& image) const {
    return UIImagePNGRepresentation(image);
}

void GameViewController::tearDownGL() {
    NSLog("TODO: tearDownGL");
}

void GameViewController::didReceiveMemoryWarning() {
    GLKViewController::didReceiveMemoryWarning();
    if (!isViewLoaded() || view()->window()) return;
    setView(nullptr);
    tearDownGL();
    if (EAGLContext::currentContext() == _context) EAGLContext::setCurrentContext(nullptr);
    _context = nullptr;
}

void GameViewController::contextLost() {
    EAGLContext::setCurrentContext(nullptr);
    // The surface has one context at a time: the dead one goes before the new one comes.
    _context = nullptr;
    makeContext();
    if (const auto view = glkView()) view->setContext(_context);
    glClearColor(1, 0, 1, 1);
    _shaderPrecisionBits.reset();
    _shader->rebuild();
}

GameViewController::~GameViewController() {
    tearDownGL();
    if (EAGLContext::currentContext() == _context) EAGLContext::setCurrentContext(nullptr);
}
