#include "cli/preprocess_command.h"

#include "cli/output.h"
#include "cli/session.h"
#include "xml/directives.h"
#include "xml/preprocessor.h"

#include <QBuffer>
#include <QFile>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>

namespace cli {

namespace {

constexpr int indent = 2;
constexpr int wrapColumn = 75;

struct PreprocessOptions {
    std::string file;
    std::string macros;
    bool expand = false;
};

class Document : public xml::XMLPP2 {
public:
    void warning(const QString& text) override { reportWarning(text.toStdString()); }

    /// Reads the file, or standard input for "-".
    bool read(const std::string& name) {
        if (name != "-") return parse(QString::fromStdString(name));
        QFile input;
        return input.open(stdin, QIODevice::ReadOnly) && xml::XMLDocument::parse(input);
    }
};

int run(const PreprocessOptions& options, const GlobalOptions& globalOptions) {
    const Session session(globalOptions);
    Document document;
    if (!document.read(options.file)) {
        reportReadError(options.file, document.errorText().toStdString(), document.errorLine());
        return 1;
    }
    if (!document.root()) {
        reportError(options.file + ": no XML document");
        return 1;
    }
    document.processConditionals(QString::fromStdString(options.file),
                                 xml::readMacroList(QString::fromStdString(options.macros)), options.expand);
    QBuffer result;
    result.open(QIODevice::WriteOnly);
    document.save(result, indent, wrapColumn);
    Output output;
    output << std::string_view(result.data().constData(), static_cast<std::size_t>(result.size()));
    return output.finish() ? 0 : 1;
}

}  // namespace

void addPreprocessCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<PreprocessOptions>();
    CLI::App* command = app.add_subcommand("preprocess", "Carries out the directives of an XML file");
    command->add_option("FILE", options->file, "The file; - for standard input")->type_name("")->required();
    command->add_option("--macros", options->macros, "Macros for the directives, NAME=VALUE;...")
        ->type_name("LIST");
    command->add_flag("--expand", options->expand, "Expands macros in all attributes");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
