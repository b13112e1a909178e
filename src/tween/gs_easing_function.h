// A curve from normalised time to normalised progress, as tweens hold it.
// Curves are compared by identity: a shared curve is one object, however often it is asked for.
#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

/// Never empty, cheap to copy.
class GSEasingFunction {
  public:
    template <typename Block>
    requires std::is_invocable_r_v<double, const Block&, double> &&
        (!std::same_as<Block, GSEasingFunction>)explicit GSEasingFunction(Block block)
        : _block(std::make_shared<const Curve>(std::move(block))) {}

    /// t: normalised time, nominally 0 to 1. The progress is 0 at 0 and 1 at 1 and may overshoot in between.
    double operator()(double t) const { return (*_block)(t); }

    friend bool operator==(const GSEasingFunction&, const GSEasingFunction&) = default;

  private:
    using Curve = std::function<double(double)>;
    const std::shared_ptr<const Curve> _block;
};
