#include "cli/script_command.h"

#include "cli/script_host.h"
#include "script/native_global.h"

#include <QFile>

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

struct ScriptOptions {
    std::vector<std::string> files;
    std::vector<std::string> texts;
    std::vector<std::string> directories;
    std::uint64_t budget = 0;
    bool hasBudget = false;
    /// For each text of the command line in order: whether it is a file.
    std::vector<bool> isFile;
};

/// Reads a file, or standard input for "-". False after a report.
bool readText(const std::string& path, QString& text) {
    QFile file;
    if (path != "-") file.setFileName(QFile::decodeName(path.c_str()));
    const bool isOpen = path == "-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen) {
        reportError("cannot open " + path + ": " + file.errorString().toStdString());
        return false;
    }
    text = QString::fromUtf8(file.readAll());
    return true;
}

/// Evaluates the texts of the command line in order, until one fails.
class ScriptRun {
public:
    ScriptRun(const ScriptOptions& options, script::ESContext& context, const BudgetContext* budget,
              Output& output)
        : options_(options), context_(context), budget_(budget), output_(output) {}

    bool run() {
        if (options_.isFile.empty()) return runFile("-");
        std::size_t file = 0;
        std::size_t text = 0;
        for (const bool isFile : options_.isFile) {
            const bool isDone = isFile ? runFile(options_.files[file++]) : runText(text++);
            if (!isDone) return false;
        }
        return true;
    }

private:
    bool runFile(const std::string& path) {
        QString text;
        return readText(path, text) && evaluate(QString::fromStdString(path), text, false);
    }

    bool runText(std::size_t place) {
        const bool isLast = place + 1 == options_.texts.size();
        return evaluate(QStringLiteral("-e"), QString::fromStdString(options_.texts[place]), isLast);
    }

    bool evaluate(const QString& name, const QString& text, bool showsValue) {
        const auto isExhausted = [this] { return budget_ != nullptr && budget_->isExhausted(); };
        const bool isDone = evaluateText(
            context_, name, text, [&] { return showsValue && !isExhausted(); }, output_);
        if (!isExhausted()) return isDone;
        output_.finish();
        reportError("instruction budget exhausted");
        return false;
    }

    const ScriptOptions& options_;
    script::ESContext& context_;
    const BudgetContext* budget_;
    Output& output_;
};

/// Readies a context of any kind for the command.
template <class Host>
void prepare(Host& context, PrintClass& print, const ScriptOptions& options) {
    script::initContext(context);
    print.bind(context);
    for (const std::string& directory : options.directories)
        context.globalClass->addLoadDirectory(QString::fromStdString(directory));
}

int run(const ScriptOptions& options) {
    Output output;
    PrintClass print(output);
    bool isDone = true;
    if (options.hasBudget) {
        BudgetContext context(options.budget);
        prepare(context, print, options);
        isDone = ScriptRun(options, context, &context, output).run();
    } else if (options.isFile.empty() && isatty(STDIN_FILENO) != 0) {
        script::MyESContext2 context;
        prepare(context, print, options);
        runConsole(context, output);
    } else {
        script::ESContext context;
        prepare(context, print, options);
        isDone = ScriptRun(options, context, nullptr, output).run();
    }
    return output.finish() && isDone ? 0 : 1;
}

}  // namespace

void addScriptCommand(CLI::App& app, int& exitStatus) {
    const auto options = std::make_shared<ScriptOptions>();
    CLI::App* command =
        app.add_subcommand("script", "Evaluates scripts in one context, or is a script console");
    CLI::Option* files =
        command->add_option("file", options->files, "Scripts to evaluate; - means standard input")
            ->type_name("FILE");
    CLI::Option* texts =
        command->add_option("-e", options->texts, "Evaluates TEXT; the last one prints its value")
            ->type_name("TEXT")
            ->allow_extra_args(false);
    command->add_option("-I", options->directories, "A directory that load() searches")
        ->type_name("DIR")
        ->allow_extra_args(false);
    CLI::Option* budget =
        command->add_option("--budget", options->budget, "Ends the scripts after N instructions")
            ->type_name("N");
    command->callback([options, command, files, texts, budget, &exitStatus] {
        options->hasBudget = budget->count() > 0;
        for (const CLI::Option* given : command->parse_order())
            if (given == files || given == texts) options->isFile.push_back(given == files);
        exitStatus = run(*options);
    });
}

}  // namespace cli
