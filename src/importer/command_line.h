#pragma once

#include <functional>
#include <set>
#include <string>

namespace importer {

/// Names of targets that decide which projects are hidden. Compared byte by byte.
using TargetSet = std::set<std::string, std::less<>>;

/// What the command line says.
struct Targets {
    TargetSet show;  ///< phony targets and custom commands whose projects stay visible
    TargetSet hide;  ///< executables and libraries whose projects are hidden
};

/// Reads the words behind the program's name; no word is ever rejected. The first goes into `show`, whatever
/// it is. Later ones go into `hide`, or into the set that "-show" or "-hide" last chose.
Targets readCommandLine(int argc, const char* const* argv);

}  // namespace importer
