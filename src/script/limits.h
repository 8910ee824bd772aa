#pragma once

#include <cstddef>
#include <cstdint>

/// Every limit of the script engine, with the reason for its size. A script that meets one gets an ordinary
/// error; none ends the process.
namespace script::limits {

/// Entries of the value stack. Beyond, a call fails with "virtual machine stack too small".
inline constexpr std::uint32_t stackSize = 1'048'576;
/// Room behind the value stack for the expressions of one code and the arguments of one native call, so that
/// only calls have to ask for space: a code has at most 65,535 bytes, and an instruction pushes one value.
inline constexpr std::uint32_t stackReserve = 2 * 65'536;
/// Script calls inside one another. They take no native stack; the figure bounds the table of frames.
inline constexpr std::uint32_t callDepth = 250'000;
/// Native stack that has to be left when a native function calls back into a script or a conversion calls
/// itself. It covers the deepest path from one such check to the next, with sanitizers.
inline constexpr std::size_t nativeStackReserve = std::size_t{512} * 1024;
/// Levels of nested syntax that the parser and the code generator follow by recursion. One level takes some
/// ten native frames, four kilobytes at most; nobody writes half as deep by hand.
inline constexpr int syntaxDepth = 800;
/// UTF-16 units of one string. Doubling a string reaches any figure in a few steps.
inline constexpr std::uint32_t stringLength = 1U << 26;
/// Bytes of objects and strings of one context. They live as long as the context, so a loop that allocates
/// has to end somewhere.
inline constexpr std::size_t contextMemory = std::size_t{2} << 30;
/// How far behind the last element an array index may lie and still be stored densely.
inline constexpr std::uint32_t denseGap = 1024;
/// Elements that a native function walks between two questions to the host whether to go on.
inline constexpr std::uint32_t nativeStride = 1024;
/// Positions of an array that one native call walks. A "length" is but a number that a script can set, and
/// sorting so many gaps takes seconds.
inline constexpr std::uint32_t arrayWalk = 1U << 24;
/// The size of a code in bytes, and the first operand that does not fit an instruction.
inline constexpr std::uint32_t operandEnd = 65'536;

}  // namespace script::limits
