#pragma once

#include "script/forth/forth_exception.h"
#include "script/forth/forth_pcode.h"
#include "script/forth/forth_source.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>

/// A Forth outer interpreter for one-line commands. It has no words of its own: the host enters `pcode`
/// objects in word lists, puts these into the engine's search order, gives it a source and calls `interpret`.
/// The engine owns none of them.
namespace script {

/// Words by their names in upper case.
using WordList = std::map<QString, pcode*>;

class ForthStack {
public:
    static constexpr std::size_t capacity = 512;

    std::array<ForthValue, capacity> values;
    std::size_t count = 0;
};

/// Is told each failed line.
class ForthErrorSink {
public:
    virtual ~ForthErrorSink() = default;
    virtual void error(const QString& text) = 0;
};

/// The state of the interpreter, which words read and change.
class ForthEngine {
public:
    static constexpr std::size_t largestSearchOrder = 8;

    std::array<WordList*, largestSearchOrder> searchOrder{};
    std::size_t searchOrderCount = 0;
    WordList* current = nullptr;            ///< looked at ahead of the search order; null when none
    ForthDefinition* definition = nullptr;  ///< under construction
    pcode* instruction = nullptr;           ///< what runs next
    std::size_t inputPosition = 0;          ///< of the first byte of the line that is not read
    std::int32_t compiling = 0;             ///< 0 interprets
    Source* source = nullptr;
    std::uint32_t wordPosition = 0;  ///< where the last word began
    std::uint32_t wordLine = 0;
    QString wordFile;
    ForthStack dataStack;
    ForthStack returnStack;
    ForthErrorSink* errorSink = nullptr;
    std::size_t nesting = 0;  ///< of calls that run
};

/// Runs the engine over its source. `result` is empty on success; otherwise it holds the error text, and the
/// engine interprets again.
void interpret(QString& result, ForthEngine& engine);

/// The next word, or the text up to the next `delimiter`, which is taken; empty at the end of the line.
/// Letters come in upper case unless `keepCase`; `notePosition` notes in the engine where it began. Throws
/// code -17 for more than 127 bytes.
QString nextWord(ForthEngine& engine, char delimiter, bool notePosition, bool keepCase);

/// The word of that name in the last list of the search order that has it; null if none.
pcode* findWord(const ForthEngine& engine, const QString& name);

/// Throws code -4 when the stack is full.
void pushValue(ForthStack& stack, const ForthValue& value);

/// Executes the nodes from `first` along `next`. Throws code -5 when calls nest as deep as the return stack
/// is.
void runChain(ForthEngine& engine, pcode* first);

}  // namespace script
