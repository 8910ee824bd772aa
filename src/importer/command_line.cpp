#include "importer/command_line.h"

#include <string_view>

namespace importer {

Targets readCommandLine(int argc, const char* const* argv) {
    Targets targets;
    TargetSet* current = &targets.hide;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (i == 1) {
            targets.show.emplace(word);
        } else if (word == "-show") {
            current = &targets.show;
        } else if (word == "-hide") {
            current = &targets.hide;
        } else {
            current->emplace(word);
        }
    }
    return targets;
}

}  // namespace importer
