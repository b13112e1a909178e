// Builders of handlers: for an object that may go away, and for a class of which each link makes an instance.
// The route holds the handler, so a handler must not hold what holds the route.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "routing/jlr_route_definition.h"

/// An object that takes links.
class JLRRouteHandlerTarget {
  public:
    virtual ~JLRRouteHandlerTarget() = default;
    virtual bool handleRouteWithParameters(const JLRRouteParameters& parameters) = 0;
};

class JLRRouteHandler {
  public:
    /// NO once the object is gone.
    static JLRRouteHandlerBlock handlerBlockForWeakTarget(std::weak_ptr<JLRRouteHandlerTarget> target) {
        return [target = std::move(target)](const JLRRouteParameters& parameters) {
            const auto living = target.lock();
            return living && living->handleRouteWithParameters(parameters);
        };
    }

    /// Makes an instance from the parameters and asks `completion`, which may keep it. A class that may
    /// refuse has a static initWithRouteParameters that answers a pointer, nothing if it refuses; the others
    /// a constructor.
    template <typename Target>
    static JLRRouteHandlerBlock handlerBlockForTargetClass(
        std::function<bool(std::shared_ptr<Target> created)> completion) {
        return [completion = std::move(completion)](const JLRRouteParameters& parameters) {
            if constexpr (requires { Target::initWithRouteParameters(parameters); })
                return completion(Target::initWithRouteParameters(parameters));
            else
                return completion(std::make_shared<Target>(parameters));
        };
    }
};
