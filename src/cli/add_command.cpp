#include "cli/add_command.h"

#include "cli/output.h"
#include "cli/session.h"
#include "project/dynamic_folder.h"
#include "project/node_adder.h"

#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

using project::ProjectElement;

struct AddOptions {
    std::string solution;
    std::vector<std::string> files;
    NodeOptions node;
    bool duplicate = false;
    bool use = false;
};

/// Answers from the words of the command line. The question about a duplicate comes only with --duplicate,
/// and is then answered by yes.
class WordPrompt : public project::Prompt {
public:
    explicit WordPrompt(bool use) : use_(use) {}
    bool ask(const QString&, const QString& heading, const QString&) override {
        return use_ || !heading.endsWith(u" File Detected");
    }

private:
    bool use_;
};

bool allExist(const std::vector<std::string>& files) {
    bool exist = true;
    for (const std::string& file : files) {
        if (QFileInfo(QString::fromStdString(file)).isFile()) continue;
        reportError("no file \"" + file + '"');
        exist = false;
    }
    return exist;
}

/// What is below a dynamic folder is not stored.
bool isFilledFromDisk(const ProjectElement& node) {
    const ProjectElement* folder = &node;
    while (folder->isFolder() && !folder->attributes.contains(project::dynamicFolderKeys::path))
        folder = folder->parentElement();
    return folder->isFolder();
}

int run(const AddOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    ProjectElement* const node = session.open(options.solution) ? session.find(options.node) : nullptr;
    if (!node || !session.canModify(*node) || !allExist(options.files)) return 1;
    if (!node->isProject() && !node->isFolder()) {
        reportError("files go into a project or a folder");
        return 1;
    }
    if (isFilledFromDisk(*node)) {
        reportError("the files of a dynamic folder are those of its directory");
        return 1;
    }
    WordPrompt prompt(options.use);
    project::NodeAdder adder(session.engine(), options.node.configurationName(), prompt);
    bool hasAdded = false;
    for (const std::string& file : options.files) {
        const QString path = QFileInfo(QString::fromStdString(file)).absoluteFilePath();
        if (adder.addExistingFile(*node, path, !options.duplicate)) {
            hasAdded = true;
        } else {
            reportWarning("\"" + file + "\" is already in the project");
        }
    }
    return !hasAdded || session.save(*node) ? 0 : 1;
}

}  // namespace

void addAddCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<AddOptions>();
    CLI::App* command = app.add_subcommand("add", "Adds existing files to a project or a folder");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    command->add_option("FILE", options->files, "The files")->type_name("")->required();
    addNodeOptions(*command, options->node);
    command->add_flag("--duplicate", options->duplicate, "Adds a file that the project has once more");
    command->add_flag("--use", options->use,
                      "Puts memory maps, linker scripts and their like to use in the configuration");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
