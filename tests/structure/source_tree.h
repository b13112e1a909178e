// The house rules of a source tree: which folder may include what, how a file opens, how long it is.
// Apart from the test, so that the rules are tried on planted violations before the real tree is judged by
// them.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace structure {

struct Violation {
    std::string file;  // relative to the root of the tree
    int line;          // counted from 1; 0 where the whole file is meant
    std::string rule;

    bool operator==(const Violation&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Violation& violation);

// Everything in src/, tests/, bench/ and resources/ under `root` that breaks a rule, sorted by file and line.
// The include rules hold in src/ alone: tests and benchmarks may look into every layer.
std::vector<Violation> violationsIn(const std::filesystem::path& root);

// How many files `violationsIn` reads there, so that a test sees that it judged a tree and not an empty
// folder.
std::size_t sourceFileCount(const std::filesystem::path& root);

}  // namespace structure
