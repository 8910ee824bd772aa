#pragma once

#include <QString>

#include <string_view>
#include <unordered_map>

namespace importer {

/// What the arguments of a compile step say, as values of properties: lists joined by ";".
struct CompileArguments {
    QString all;                       ///< every argument
    QString definitions;               ///< what follows "-D"
    QString userIncludeDirectories;    ///< what follows "-I"
    QString systemIncludeDirectories;  ///< what stands behind "-isystem"
    QString macroFiles;                ///< "-imacros" with their files
};

/// Translates the arguments of compile steps. Steps by the thousand share a few sets of flags, so each set is
/// translated once.
class CompileTranslator {
public:
    /// The three texts belong to one graph, in which equal values are the same text at the same address. The
    /// answer lives as long as the translator.
    const CompileArguments& translate(std::string_view defines, std::string_view includes,
                                      std::string_view flags);

private:
    struct Key {
        std::string_view defines, includes, flags;
        friend bool operator==(const Key& a, const Key& b) {
            return same(a.defines, b.defines) && same(a.includes, b.includes) && same(a.flags, b.flags);
        }
        static bool same(std::string_view a, std::string_view b) {
            return a.data() == b.data() && a.size() == b.size();
        }
    };
    struct Hash {
        std::size_t operator()(const Key& key) const;
    };

    std::unordered_map<Key, CompileArguments, Hash> known_;
};

}  // namespace importer
