// Property groups files: every choice can be made, told and cleared.
#include "description_engine.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace project;
    static fuzz::DescriptionEngine engine;
    static const fuzz::MemoryFile file;
    file.fill(data, size);
    engine.start();
    engine.set("property_groups_file_path", QString::fromStdString(file.path()));
    const auto* const groups = engine.propertyGroupFile(engine.top, commonConfiguration);
    if (!groups) return 0;
    int choices = 100;
    for (const auto* group : groups->groups()) {
        PropertyValueGroupValue value(group, commonConfiguration, engine.top);
        for (const QString& choice : group->values()) {
            if (--choices < 0) return 0;
            value.setValue(choice);
            value.helpText();
            engine.expandMacros(engine.top, commonConfiguration, QStringLiteral("$(a)"));
        }
        value.clear();
    }
    engine.propertyGroupElements(engine.top, commonConfiguration, "cinclude");
    return 0;
}
