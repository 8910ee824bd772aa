// Generic options files: whatever one adds to the schema is gone when it is unloaded.
#include "description_engine.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace project;
    static fuzz::DescriptionEngine engine;
    static const fuzz::MemoryFile file;
    static const PropertyClass* const quietly = engine.schema().find(QStringLiteral("build_quietly"));
    file.fill(data, size);
    engine.start();
    engine.set("c_additional_options", QStringLiteral("-O2;-g;-x;y"));
    engine.set("build_generic_options_file_name", QString::fromStdString(file.path()));
    engine.nodePropertyValues(engine.top, commonConfiguration);
    engine.storedPropertyValues(engine.top, engine.top->configurations.value(commonConfiguration));
    engine.closeSolution();
    if (engine.schema().find(QStringLiteral("build_quietly")) != quietly || quietly->defaultValue != u"Yes")
        __builtin_trap();
    return 0;
}
