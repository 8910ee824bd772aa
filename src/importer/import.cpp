#include "importer/import.h"

#include "importer/graph_importer.h"
#include "importer/my_project_system.h"
#include "manifest/manifest_parser.h"
#include "manifest/real_disk_interface.h"
#include "project/base/path.h"

#include <new>
#include <string>

namespace importer {

namespace {

/// Makes an engine the one of the process for as long as this object lives.
class EngineOfTheProcess {
public:
    explicit EngineOfTheProcess(project::ProjectSystem& engine) { project::projectSystem = &engine; }
    EngineOfTheProcess(const EngineOfTheProcess&) = delete;
    EngineOfTheProcess& operator=(const EngineOfTheProcess&) = delete;
    ~EngineOfTheProcess() { project::projectSystem = nullptr; }
};

}  // namespace

bool importManifest(project::StandardProjectSystem& engine, manifest::State& state, const char* manifestFile,
                    const Targets& targets) {
    project::ProjectElement* const solution =
        engine.newSolution(QStringLiteral("build"), project::Path(manifestFile).dirPath());
    GraphImporter importer(engine, targets, solution);
    importer.reserve(state.edges().size());
    std::string error;  // without roots the solution stays empty, and is saved all the same
    for (const manifest::Node* root : state.defaultNodes(&error)) importer.importNode(root);
    const bool saved = engine.saveSolution(solution, true);
    engine.closeSolution();
    return saved;
}

int run(int argc, const char* const* argv) try {
    MyProjectSystem engine;
    const EngineOfTheProcess current(engine);

    constexpr const char* manifestFile = "build.ninja";
    manifest::State state;
    manifest::RealDiskInterface disk;
    std::string error;
    manifest::ManifestParser parser(&state, &disk);
    if (!parser.load(manifestFile, &error, nullptr)) return 1;
    importManifest(engine, state, manifestFile, readCommandLine(argc, argv));
    return 0;
} catch (const std::bad_alloc&) {
    return 1;
}

}  // namespace importer
