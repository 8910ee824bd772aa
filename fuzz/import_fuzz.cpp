// The whole import: any manifest ends in an error, a fatal error or a solution file that reads back.
#include "importer/import.h"
#include "importer/my_project_system.h"
#include "manifest/manifest_parser.h"
#include "manifest/message.h"
#include "xml/document.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

struct FatalError {};

class TextReader : public manifest::FileReader {
public:
    explicit TextReader(std::string text) : text_(std::move(text)) {}

    Status readFile(const std::string& path, std::string* contents, std::string* error) override {
        if (path != "build.ninja" || read_) {
            *error = "no such text";
            return Status::NotFound;
        }
        read_ = true;
        *contents = text_;
        return Status::Okay;
    }

private:
    std::string text_;
    bool read_ = false;
};

/// The rules that CMake writes, so that inputs can be short.
std::string withRules(const std::uint8_t* data, std::size_t size) {
    std::string text;
    for (const char* rule :
         {"C_COMPILER", "CXX_COMPILER", "C_EXECUTABLE_LINKER", "C_STATIC_LIBRARY_LINKER", "CUSTOM_COMMAND"})
        text += std::string("rule ") + rule + "\n  command = x\n";
    return text.append(reinterpret_cast<const char*>(data), size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir directory;
    static importer::MyProjectSystem engine;
    project::projectSystem = &engine;
    manifest::setFatalHandler([](const std::string&) { throw FatalError(); });

    TextReader reader(withRules(data, size));
    manifest::State state;
    std::string error;
    try {
        manifest::ManifestParser parser(&state, &reader, manifest::DuplicateOutputAction::Warn,
                                        manifest::PhonyCycleAction::Warn, true);
        if (!parser.load("build.ninja", &error, nullptr)) return 0;
    } catch (const FatalError&) {
        return 0;
    }
    const QByteArray file = QFile::encodeName(directory.filePath(QStringLiteral("build.ninja")));
    if (!importer::importManifest(engine, state, file.constData(), {{"all"}, {"lib"}})) __builtin_trap();
    xml::QXMLDocument solution;
    if (!solution.parse(directory.filePath(QStringLiteral("build.qxProject"))) || !solution.root())
        __builtin_trap();
    return 0;
}
