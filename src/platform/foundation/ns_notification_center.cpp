// Delivers notifications from a snapshot of the observers.
// So blocks may post, add and remove, themselves included, while a posting is under way.
#include "platform/foundation/ns_notification_center.h"

#include <utility>

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter center;
    return center;
}

void NSNotificationCenter::addObserver(std::weak_ptr<void> observer, const std::string& name,
                                       const void* object, Block block) {
    if (!block) return;
    _observers.push_back(
        std::make_shared<Observer>(Observer{std::move(observer), name, object, std::move(block)}));
}

void NSNotificationCenter::removeObserver(const void* observer) {
    std::erase_if(_observers, [observer](const std::shared_ptr<Observer>& entry) {
        if (entry->observer.lock().get() == observer) entry->removed = true;
        return entry->removed;
    });
}

void NSNotificationCenter::postNotificationName(const std::string& name, const void* object) {
    const auto snapshot = _observers;
    for (const auto& entry : snapshot) {
        if (entry->removed || entry->name != name) continue;
        if (entry->object && entry->object != object) continue;
        // Held through its own block, which may drop the last other reference.
        const std::shared_ptr<void> alive = entry->observer.lock();
        if (alive) entry->block({name, object});
    }
    std::erase_if(_observers, [](const auto& entry) { return entry->observer.expired(); });
}
