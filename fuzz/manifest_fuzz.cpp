// The manifest reader: any text ends in a graph, an error text or a fatal error, and a graph survives being
// printed.
#include "manifest/manifest_parser.h"
#include "manifest/message.h"
#include "manifest/state.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

struct FatalError {};

/// Every name is the fuzzed text but for "missing", so that includes nest.
class TextReader : public manifest::FileReader {
public:
    explicit TextReader(std::string text) : text_(std::move(text)) {}

    Status readFile(const std::string& path, std::string* contents, std::string* error) override {
        if (path == "missing" || ++reads_ > 100) {
            *error = "no such text";
            return Status::NotFound;
        }
        *contents = text_;
        return Status::Okay;
    }

private:
    std::string text_;
    int reads_ = 0;
};

void readBindings(const manifest::State& state) {
    std::size_t left = 100;
    for (const manifest::Edge* edge : state.edges()) {
        if (left-- == 0) return;
        for (const char* name : {"command", "description", "in_newline", "out"}) edge->binding(name);
        if (edge->explicitOutputs().size() + edge->implicitOutputs().size() != edge->outputs().size())
            __builtin_trap();
        if (edge->explicitInputs().size() + edge->implicitInputs().size() + edge->orderOnlyInputs().size() !=
            edge->inputs().size())
            __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    manifest::setFatalHandler([](const std::string&) { throw FatalError(); });
    TextReader reader(std::string(reinterpret_cast<const char*>(data), size));
    manifest::State state;
    std::string error;
    try {
        manifest::ManifestParser parser(&state, &reader, manifest::DuplicateOutputAction::Error,
                                        manifest::PhonyCycleAction::Warn, true);
        const bool loaded = parser.load("build.ninja", &error, nullptr);
        if (loaded != error.empty()) __builtin_trap();
        if (!loaded) return 0;
        state.defaultNodes(&error);
        readBindings(state);
    } catch (const FatalError&) {
        return 0;
    }
    return 0;
}
