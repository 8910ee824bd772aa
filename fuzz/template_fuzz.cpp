// Template files: every template of a file can be expanded, or is refused with an error.
#include "description_engine.h"
#include "project/project_templates.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace project;
    static fuzz::DescriptionEngine engine;
    static const fuzz::MemoryFile file;
    // Scans of the disk and links would leave the input.
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (text.contains("path") || text.contains("import") || text.contains("include")) return 0;
    file.fill(data, size);
    engine.start();
    LoadWork work;
    ProjectTemplates templates(QString::fromStdString(file.path()), work);
    for (const QString& name : templates.projectTemplates().names()) {
        try {
            templates.expandTemplate(*engine.solution(), *engine.top,
                                     *templates.projectTemplates().find(name),
                                     {QStringLiteral("A"), QStringLiteral("B")});
        } catch (const SolutionLoadError&) {
            break;
        }
    }
    engine.rebuildProjectMaps();
    return 0;
}
