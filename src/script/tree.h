#pragma once

#include "script/code.h"
#include "script/token.h"

#include <QHash>

#include <cstdint>
#include <memory>

namespace script {

struct FunctionUnit;

/// A node of the syntax tree. Nodes belong to the pool of their parser and go with it. Children by kind:
/// operators hold their operands in order; lists (statements, arguments, elements, members, clauses) hang on
/// a child by its first item and run through `next`.
struct ESNode {
    static constexpr std::uint32_t endOfChain = 65535;

    int kind = 0;
    std::uint32_t line = 0;  ///< where the node was begun
    const ESAtom* name = nullptr;
    std::uint32_t numberIndex = 0;  ///< in the number table of its code
    std::uint32_t breakChain = endOfChain;
    std::uint32_t continueChain = endOfChain;
    bool hasEffects = false;  ///< the node or a part of it does more than yield a value
    ESNode* next = nullptr;
    ESNode* child[4] = {};
    FunctionUnit* function = nullptr;
};

/// A function or the program while it is compiled. A program is not a function: `enclosing` is null and
/// `isProgram` is set.
struct FunctionUnit {
    FunctionUnit* enclosing = nullptr;
    bool isProgram = false;
    bool isInsideWith = false;  ///< an enclosing `with` may hold any name
    std::unique_ptr<ESCode> ownedCode;
    ESCode* code = nullptr;
    std::uint32_t templateIndex = 0;
    ESNode* body = nullptr;
    std::uint32_t line = 0;
    bool declaresArguments = false;
    QHash<const ESAtom*, std::uint32_t> variableIndex;  ///< the last entry of each name in `code->variables`
    QHash<std::uint64_t, std::uint32_t> numberIndex;    ///< by the bits of the number
    QHash<const ESAtom*, std::uint32_t> atomIndex;
};

}  // namespace script
