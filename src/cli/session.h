#pragma once

#include "cli/command_line_engine.h"
#include "cli/global_options.h"
#include "project/base/macro_engine.h"

#include <QString>

#include <optional>
#include <string>

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace cli {

/// How the command line names a node; see addNodeOptions.
struct NodeOptions {
    std::optional<std::string> project;
    std::optional<std::string> folder;
    std::optional<std::string> file;
    std::string configuration = "Common";

    QString configurationName() const { return QString::fromStdString(configuration); }
};

/// Registers -p, -F, -f and -c. `options` outlives the parse.
void addNodeOptions(CLI::App& command, NodeOptions& options);
/// Registers -c alone.
void addConfigurationOption(CLI::App& command, std::string& configuration);

/// Takes any text but an empty one.
CLI::Validator isName();

/// Reports a load error: the file, the line where it is known, and the message.
void reportLoadError(const project::SolutionLoadError& error);

/// The engine at work for one command: while a session lives it is the engine of the process, and its macros
/// are set up. Operations report what went wrong by themselves.
class Session {
public:
    explicit Session(const GlobalOptions& options);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Opens a solution, for the system's own target.
    bool open(const std::string& solutionFile);
    /// The node of the open solution that the options name, or null.
    project::ProjectElement* find(const NodeOptions& options);
    /// The configuration of a build: the one named, which the solution must have, or without a name its first
    /// public one.
    bool chooseConfiguration(const std::string& name, QString& configuration);
    /// The class that the key of a property finds at the node, or null.
    const project::PropertyClass* findClass(const std::string& key, const NodeOptions& options,
                                            project::ProjectElement& node);
    /// Whether what is stored at `node` may be changed.
    bool canModify(project::ProjectElement& node);
    /// Writes the file of the nearest solution at or above the node, in place.
    bool save(project::ProjectElement& node);
    bool saveAll();

    CommandLineEngine& engine() { return engine_; }

private:
    project::MacroEngine macros_;
    CommandLineEngine engine_;
};

}  // namespace cli
