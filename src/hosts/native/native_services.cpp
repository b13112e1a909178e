// Sets the shared services and takes them back.
// Nothing is opened here but the settings: fonts and resources wait until somebody asks.
#include "hosts/native/native_services.h"

#include <utility>

#include "hosts/native/native_canvas_provider.h"
#include "hosts/native/native_image_codec.h"
#include "hosts/native/resource_reader.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_user_defaults.h"

NativeServices::NativeServices(std::shared_ptr<PreferencesStore> preferences, std::string resourceFolder) {
    if (resourceFolder.empty()) resourceFolder = findResourceFolder().value_or("");
    if (!resourceFolder.empty()) {
        NSBundle::mainBundle().setReader(makeFileResourceReader(std::move(resourceFolder)));
    }
    setSharedCanvasProvider(std::make_shared<NativeCanvasProvider>());
    setSharedImageCodec(std::make_shared<NativeImageCodec>());
    NSUserDefaults::setStandardStore(std::move(preferences));
}

NativeServices::~NativeServices() {
    NSUserDefaults::setStandardStore(nullptr);
    setSharedImageCodec(nullptr);
    setSharedCanvasProvider(nullptr);
    NSBundle::mainBundle().setReader({});
}
