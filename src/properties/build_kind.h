#pragma once

#include <cstdint>

namespace properties {

/// What a build does with one node of the project tree. The numbers are those of the sets of affecting
/// properties.
enum class BuildKind : std::uint32_t {
    NoBuild = 0,     ///< nothing for the node itself; its children are still visited
    Excluded = 1,    ///< a file that is excluded in this configuration
    CompileC = 2,    ///< a C source file
    CompileCpp = 3,  ///< a C++ source file
    Assemble = 4,    ///< an assembly source file
    ExternalBuild =
        5,         ///< a project built by a command of its own; a ready-made output among a project's files
    Link = 7,      ///< a project that makes an executable
    Archive = 8,   ///< a project that makes a library
    Stage = 9,     ///< a staging project, or a file in one
    Combine = 10,  ///< a combining project
};
inline constexpr std::uint32_t buildKindCount = 11;

/// Whether the kind makes an object file of a source file.
constexpr bool isCompilation(BuildKind kind) {
    return kind == BuildKind::CompileC || kind == BuildKind::CompileCpp || kind == BuildKind::Assemble;
}

/// The bits of one build request.
enum BuildFlags : std::uint32_t {
    Clean = 0x1,                ///< delete outputs before building
    Rebuild = 0x2,              ///< treat everything as out of date
    NoTools = 0x4,              ///< run no command; answer whether one would run
    Quiet = 0x8,                ///< no checks and no reasons in the log
    NoChildren = 0x10,          ///< do not visit the node's children
    AnalyzeOnly = 0x40,         ///< run the analyzer on C and C++ files and build nothing
    KeepGoing = 0x80,           ///< go on over a failed step
    NoTitle = 0x100,            ///< no title for the build
    NoDependencyFiles = 0x200,  ///< tools write no dependency files
    NoUnity = 0x400,            ///< build unity folders file by file
    WholeProjects = 0x1000,     ///< plan whole projects
    ProjectBegin = 0x2000,      ///< a project begins with this plan item
    ProjectEnd = 0x4000,        ///< a project ends with this plan item
};

}  // namespace properties
