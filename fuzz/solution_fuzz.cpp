// The load of a solution: any file loads or gives one error. What loads is saved, and the saved file loads to
// the same text. Load commands are off.
#include "project/base/macro_engine.h"
#include "project/standard_project_system.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace project;

class Engine : public StandardProjectSystem {
public:
    Engine() : StandardProjectSystem(QString(), {}, QString()) {
        projectSystem = this;
        macroEngine = &macros_;
        runsLoadCommands = false;
    }
    QStringList baseCodeModelArguments(ProjectElement*, const QString&) override { return {}; }

    bool load(const QString& path) {
        try {
            loadSolution(path, nullptr, nullptr, nullptr, false);
            return true;
        } catch (const SolutionLoadError& error) {
            if (error.message().isEmpty() || solution()) std::abort();
            return false;
        }
    }

private:
    MacroEngine macros_;
};

void write(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(text);
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Engine engine;
    static const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("a.qxProject"));
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (text.count('<') > 2000) return 0;  // indentation would make deep texts very long
    write(path, text);
    if (!engine.load(path)) return 0;
    if (!engine.saveSolution(engine.solution(), false)) std::abort();
    const QByteArray saved = read(path);
    if (!engine.load(path) || !engine.saveSolution(engine.solution(), false)) std::abort();
    if (read(path) != saved) std::abort();
    return 0;
}
