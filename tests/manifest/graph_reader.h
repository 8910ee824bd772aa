#pragma once

#include "manifest/manifest_parser.h"
#include "manifest/state.h"

#include <map>
#include <string>

namespace manifest_test {

/// Files by name, held in memory.
class MemoryReader : public manifest::FileReader {
public:
    std::map<std::string, std::string> files;

    Status readFile(const std::string& path, std::string* contents, std::string* error) override {
        const auto found = files.find(path);
        if (found == files.end()) {
            *error = "No such file or directory";
            return Status::NotFound;
        }
        *contents = found->second;
        return Status::Okay;
    }
};

/// A manifest in memory, read on construction.
struct Graph {
    explicit Graph(const std::string& text, std::map<std::string, std::string> others = {}) {
        reader.files = std::move(others);
        reader.files["build.ninja"] = text;
        loaded = manifest::ManifestParser(&state, &reader).load("build.ninja", &error, nullptr);
    }

    MemoryReader reader;
    manifest::State state;
    std::string error;
    bool loaded = false;
};

inline void appendPaths(std::string& text, const char* opening, std::span<manifest::Node* const> nodes) {
    if (nodes.empty()) return;
    text += opening;
    for (const manifest::Node* node : nodes) text.append(" ").append(node->path());
}

/// All edges in manifest form, one a line.
inline std::string edgesOf(const manifest::State& state) {
    std::string text;
    for (const manifest::Edge* edge : state.edges()) {
        text += "build";
        appendPaths(text, "", edge->explicitOutputs());
        appendPaths(text, " |", edge->implicitOutputs());
        text.append(": ").append(edge->rule()->name());
        appendPaths(text, "", edge->explicitInputs());
        appendPaths(text, " |", edge->implicitInputs());
        appendPaths(text, " ||", edge->orderOnlyInputs());
        text += "\n";
    }
    return text;
}

inline std::string rootsOf(const manifest::State& state, std::string* error) {
    std::string text;
    for (const manifest::Node* node : state.defaultNodes(error)) text.append(node->path()).append(" ");
    return text;
}

}  // namespace manifest_test
