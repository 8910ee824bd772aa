#pragma once

#include "script/property_vector.h"

#include <cstdint>
#include <vector>

namespace script {

/// The byte code of one function or program, with its tables. An instruction is an opcode byte and operands
/// of 16 bits, high byte first. Belongs to its context once it is compiled, and is shared by all closures
/// made from it.
struct ESCode {
    ESCode() {
        constexpr std::size_t firstCapacity = 200;
        bytes.reserve(firstCapacity);
        lines.reserve(firstCapacity);
    }

    std::vector<std::uint8_t> bytes;
    std::vector<std::uint32_t> lines;  ///< one for each byte
    std::vector<double> numbers;
    std::vector<const ESAtom*> atoms;  ///< what the `a` operands count, so that no context runs out of names
    std::vector<std::uint32_t> functions;  ///< templates of the context, counted by CLOSURE
    std::uint32_t parameterCount = 0;
    std::uint32_t localCount = 0;
    std::uint32_t stackDepth = 0;  ///< values that the code has on the stack at most
    bool usesArguments = false;
    bool needsActivation = false;
    std::vector<ESProperty> variables;  ///< parameters first, then declared variables, in order
};

}  // namespace script
