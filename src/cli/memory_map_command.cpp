#include "cli/memory_map_command.h"

#include "cli/memory_text.h"
#include "cli/output.h"
#include "cli/session.h"

#include <QFile>
#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

using expressions::MemoryMapElement;

struct MemoryMapOptions {
    std::string file;
    std::string macros;
    bool noPreprocess = false;
    bool tree = false;
};

class Map : public expressions::MemoryMap {
public:
    using MemoryMap::MemoryMap;
    void warning(const QString& text) override { reportWarning(text.toStdString()); }

    /// Reads the file, or standard input for "-".
    bool read(const std::string& name) {
        if (name != "-") return loadFile(QFileInfo(QString::fromStdString(name)).absoluteFilePath());
        QFile input;
        return input.open(stdin, QIODevice::ReadOnly) && load(input);
    }
};

std::string nameOf(const MemoryMapElement& element) {
    return printable(element.attribute("name").toStdString());
}

void printSegments(const Map& map, Output& output) {
    for (const MemoryMapElement* segment : map.memorySegments(false))
        output << addressText(segment->start) << " " << addressText(segment->size) << " "
               << accessText(expressions::accessOf(*segment)) << " " << nameOf(*segment) << "\n";
}

void printElement(const MemoryMapElement& element, std::size_t depth, Output& output) {
    output << indentation(depth) << printable(element.tagName().toStdString()) << " "
           << addressText(element.start) << " " << addressText(element.size);
    if (element.hasAttribute("name")) output << " " << nameOf(element);
    output << "\n";
}

/// Maps nest as deep as they like.
void printTree(const Map& map, Output& output) {
    std::vector<const xml::XMLNode*> open{map.root()};
    while (!open.empty()) {
        const xml::XMLNode*& next = open.back();
        if (!next) {
            open.pop_back();
            continue;
        }
        const xml::XMLNode* const node = next;
        next = node->nextSibling();
        const auto* const element = expressions::asMemoryMapElement(const_cast<xml::XMLNode*>(node));
        if (!element) continue;
        printElement(*element, open.size() - 1, output);
        open.push_back(element->firstChild());
    }
}

int run(const MemoryMapOptions& options, const GlobalOptions& globalOptions) {
    const Session session(globalOptions);
    Map map(!options.noPreprocess, QString::fromStdString(options.macros));
    if (!map.read(options.file)) {
        if (map.errorText().isEmpty()) {
            reportError(options.file + ": no memory map");
        } else {
            reportReadError(options.file, map.errorText().toStdString(), map.errorLine());
        }
        return 1;
    }
    Output output;
    if (options.tree) {
        printTree(map, output);
    } else {
        printSegments(map, output);
    }
    return output.finish() ? 0 : 1;
}

}  // namespace

std::string addressText(std::uint32_t address) {
    std::array<char, 11> text;
    std::snprintf(text.data(), text.size(), "0x%08x", address);
    return text.data();
}

const char* accessText(expressions::MemoryAccess access) {
    constexpr std::array<const char*, 4> names = {"ReadWrite", "ReadOnly", "WriteOnly", "None"};
    return names[static_cast<std::size_t>(access)];
}

void addMemoryMapCommand(CLI::App& app, const GlobalOptions& globalOptions, int& exitStatus) {
    const auto options = std::make_shared<MemoryMapOptions>();
    CLI::App* command = app.add_subcommand("memory-map", "Prints the segments of a memory map file");
    command->add_option("FILE", options->file, "The file; - for standard input")->type_name("")->required();
    command->add_option("--macros", options->macros, "Macros for the directives, NAME=VALUE;...")
        ->type_name("LIST");
    command->add_flag("--no-preprocess", options->noPreprocess, "Leaves directives as they are");
    command->add_flag("--tree", options->tree, "Prints every element with its start and size");
    command->callback([options, &globalOptions, &exitStatus] { exitStatus = run(*options, globalOptions); });
}

}  // namespace cli
