#include "cli/segments_command.h"

#include "cli/memory_text.h"
#include "cli/output.h"
#include "cli/session.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace cli {

namespace {

struct SegmentsOptions {
    std::string solution;
    NodeOptions node;
};

int run(const SegmentsOptions& options, const GlobalOptions& globalOptions) {
    Session session(globalOptions);
    project::ProjectElement* const node =
        session.open(options.solution) ? session.find(options.node) : nullptr;
    if (!node) return 1;
    QList<project::MemorySegment> segments;
    if (!session.engine().memorySegments(node, options.node.configurationName(), segments)) {
        reportError("no memory segments");
        return 1;
    }
    Output output;
    for (const project::MemorySegment& segment : segments)
        output << addressText(segment.start) << " " << addressText(segment.last) << " "
               << accessText(static_cast<expressions::MemoryAccess>(segment.access)) << " "
               << printable(segment.name.toStdString()) << "\n";
    return output.finish() ? 0 : 1;
}

}  // namespace

void addSegmentsCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<SegmentsOptions>();
    CLI::App* command = app.add_subcommand("segments", "Prints the memory segments of a node");
    command->add_option("SOLUTION", options->solution, "The solution file")->type_name("")->required();
    addNodeOptions(*command, options->node);
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
