#pragma once

#include "manifest/file_reader.h"
#include "manifest/manifest_lexer.h"
#include "manifest/name_table.h"
#include "manifest/path_list.h"
#include "manifest/state.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace manifest {

/// What becomes of an output that another edge has already.
enum class DuplicateOutputAction : std::int32_t { Warn = 0, Error = 1 };

/// What becomes of a phony target that names itself as an input: it loses that input, or stays as it is.
enum class PhonyCycleAction : std::int32_t { Warn = 0, Ignore = 1 };

/// Reads one manifest file, and through parsers of its own what that file includes, into a `State`.
///
/// The grammar, one statement a line, indented lines belonging to the statement above:
///
///     name = value
///     rule NAME            then  key = value
///     pool NAME            then  depth = value
///     build OUTS [| IMPLICIT OUTS]: RULE [INS] [| IMPLICIT INS] [|| ORDER-ONLY INS]   then  key = value
///     default PATHS
///     include PATH
///     subninja PATH
///
/// Values are evaluated as they are read, but for those of rules. An operation that fails answers false with
/// the error text set and leaves the `State` half filled, to be thrown away. Warnings, an unsupported
/// language version and a path of too many components print; the last two end the process. `limits.h` bounds
/// all that a file can ask for.
class ManifestParser {
public:
    /// A parser of a top-level file. `state` and `reader` outlive it; `quiet` drops the warnings.
    ManifestParser(State* state, FileReader* reader,
                   DuplicateOutputAction duplicateOutputAction = DuplicateOutputAction::Warn,
                   PhonyCycleAction phonyCycleAction = PhonyCycleAction::Warn, bool quiet = false);
    ManifestParser(const ManifestParser&) = delete;
    ManifestParser& operator=(const ManifestParser&) = delete;

    /// Reads the file and all that it includes. `parent` is the lexer of the including file, null for none;
    /// when the file cannot be read, its place stands in the error.
    bool load(const std::string& fileName, std::string* error, const ManifestLexer* parent);

private:
    /// A build statement as it stands in the file, before its variables are known. One object serves all
    /// statements of a file.
    struct BuildStatement {
        PathList outputs;
        PathList inputs;
        std::size_t implicitOutputs = 0;
        std::size_t implicitInputs = 0;
        std::size_t orderOnlyInputs = 0;
        const Rule* rule = nullptr;
        std::vector<NameTable<PooledString>::Entry> bindings;
    };

    /// A parser of a file that another one includes.
    ManifestParser(const ManifestParser& includer, BindingEnv* scope);

    bool readSource(const std::string& fileName, std::string* contents, std::string* error);
    bool refuseSource(const std::string& fileName, std::string* error) const;
    bool parse(std::string* error);
    bool parseStatement(Token token, std::string* error);

    bool parseVariable(std::string* error);
    bool parseRule(std::string* error);
    bool parseRuleBindings(Rule* rule, std::string* error);
    bool parsePool(std::string* error);
    bool parsePoolDepth(std::int32_t* depth, std::string* error);
    bool parseDefault(std::string* error);
    bool parseInclude(BindingEnv* scope, std::string* error);

    bool parseBuild(std::string* error);
    bool readBuildLine(std::string* error);
    bool readBuildBindings(std::string* error);
    BindingEnv* makeStatementScope();
    bool setPool(Edge* edge, std::string* error);
    bool addOutputs(Edge* edge, std::string* error);
    bool refuseDuplicateOutput(std::string* error);
    bool addInputs(Edge* edge, std::string* error);
    void removeSelfReferences(Edge* edge);
    bool checkDeps(const Edge* edge, std::string* error);

    bool parseLet(std::string_view* key, EvalString* value, std::string* error);
    bool expectToken(Token expected, std::string* error);
    bool readPaths(PathList* paths, std::size_t* count, std::string* error);
    std::string_view evaluate(const EvalString& text, Env& scope);
    PooledString evaluateBinding(const EvalString& text);
    bool evaluatePath(const EvalString& text, Env& scope, std::string* error);
    std::string edgeBinding(const Edge* edge, std::string_view name);
    void chargeExpansion(std::size_t bytes);

    State* state_;
    FileReader* reader_;
    DuplicateOutputAction duplicateOutputAction_;
    PhonyCycleAction phonyCycleAction_;
    bool quiet_;
    BindingEnv* scope_;                         ///< of the file being read
    const ManifestParser* includer_ = nullptr;  ///< null for a top-level file
    std::size_t depth_ = 1;                     ///< files under reading, this one included
    std::string fileName_;
    ManifestLexer lexer_;

    BuildStatement build_;
    EvalString value_;      ///< of the let being read
    std::string expanded_;  ///< room for the text being evaluated
    std::string path_;      ///< the canonical path being looked up
    std::uint64_t slashBits_ = 0;
};

}  // namespace manifest
