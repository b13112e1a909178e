// The object that stands for "nothing" where only objects may stand, as in dictionaries.
// Two of them are always equal.
#pragma once

struct NSNull {
    friend bool operator==(const NSNull&, const NSNull&) = default;
};
