#include "cli/manifest_command.h"

#include "cli/output.h"
#include "manifest/manifest_parser.h"
#include "manifest/real_disk_interface.h"
#include "manifest/state.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace cli {

namespace {

struct ManifestOptions {
    std::string file;
    bool edges = false;
    bool roots = false;
    std::string binding;
    bool hasBinding = false;
};

/// The file system, with standard input under the name "-" of the first file.
class CommandFileReader : public manifest::FileReader {
public:
    Status readFile(const std::string& path, std::string* contents, std::string* error) override {
        const bool standardInput = isFirst_ && path == "-";
        isFirst_ = false;
        return standardInput ? manifest::RealDiskInterface::readDescriptor(STDIN_FILENO, contents, error)
                             : disk_.readFile(path, contents, error);
    }

private:
    manifest::RealDiskInterface disk_;
    bool isFirst_ = true;
};

/// Prints the engine's text, which may have several lines, as it is.
int fail(const std::string& text) {
    std::fputs((text + "\n").c_str(), stderr);
    return 1;
}

void printPaths(std::string_view opening, std::span<manifest::Node* const> nodes, Output& output) {
    if (nodes.empty()) return;
    output << opening;
    for (const manifest::Node* node : nodes) output << " " << node->path();
}

void printEdge(const manifest::Edge& edge, Output& output) {
    output << "build";
    printPaths("", edge.explicitOutputs(), output);
    printPaths(" |", edge.implicitOutputs(), output);
    output << ": " << edge.rule()->name();
    printPaths("", edge.explicitInputs(), output);
    printPaths(" |", edge.implicitInputs(), output);
    printPaths(" ||", edge.orderOnlyInputs(), output);
    output << "\n";
}

int printRoots(const manifest::State& state, Output& output) {
    std::string error;
    for (const manifest::Node* root : state.defaultNodes(&error)) output << root->path() << "\n";
    return error.empty() ? 0 : fail(error);
}

int print(const ManifestOptions& options, manifest::State& state, Output& output) {
    if (options.roots) return printRoots(state, output);
    if (options.edges) {
        for (const manifest::Edge* edge : state.edges()) printEdge(*edge, output);
    } else if (options.hasBinding) {
        for (const manifest::Edge* edge : state.edges())
            output << edge->outputs().front()->path() << "\t" << edge->binding(options.binding) << "\n";
    } else {
        output << "edges " << std::to_string(state.edges().size()) << "\n";
        output << "nodes " << std::to_string(state.nodeCount()) << "\n";
    }
    return 0;
}

int run(const ManifestOptions& options) {
    manifest::State state;
    CommandFileReader reader;
    std::string error;
    if (!manifest::ManifestParser(&state, &reader).load(options.file, &error, nullptr)) return fail(error);
    Output output;
    const int status = print(options, state, output);
    return output.finish() ? status : 1;
}

}  // namespace

void addManifestCommand(CLI::App& app, int& exitStatus) {
    const auto options = std::make_shared<ManifestOptions>();
    CLI::App* command =
        app.add_subcommand("manifest", "Reads a build manifest and prints its counts of edges and nodes");
    command->add_option("FILE", options->file, "The manifest; - means standard input")
        ->type_name("")
        ->required();
    CLI::Option* edges = command->add_flag("--edges", options->edges, "Prints each edge in manifest form");
    CLI::Option* roots =
        command->add_flag("--roots", options->roots, "Prints the default targets or root nodes");
    CLI::Option* binding = command
                               ->add_option("--binding", options->binding,
                                            "Prints each edge's first output and its expanded binding NAME")
                               ->type_name("NAME");
    edges->excludes(roots)->excludes(binding);
    roots->excludes(binding);
    command->callback([options, binding, &exitStatus] {
        options->hasBinding = binding->count() > 0;
        exitStatus = run(*options);
    });
}

}  // namespace cli
