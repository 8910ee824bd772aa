#include "script/forth/forth_engine.h"

#include <QByteArray>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace script {

namespace {

constexpr std::size_t longestWord = 127;

bool isGraphic(char character) {
    return character >= '!' && character <= '~';
}

bool endsWord(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code <= ' ' || code == 127;
}

/// Skips to the first byte that `starts` accepts, then over all up to one that `ends` accepts.
template <class Starts, class Ends>
std::string_view take(ForthEngine& engine, Starts starts, Ends ends) {
    const std::string& text = engine.source->text;
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(std::min(engine.inputPosition, text.size()));
    const auto first = std::find_if(from, text.end(), starts);
    const auto last = std::find_if(first, text.end(), ends);
    engine.source->position = static_cast<std::uint32_t>(first - text.begin());
    engine.inputPosition = static_cast<std::size_t>(last - text.begin());
    return {first, last};
}

void append(ForthEngine& engine, std::unique_ptr<pcode> node) {
    if (engine.definition == nullptr) throw ForthException(ForthNoDefinition);
    engine.definition->append(std::move(node));
}

void compileOrPush(ForthEngine& engine, const ForthValue& value) {
    if (engine.compiling)
        append(engine, std::make_unique<PLiteralChild>(value));
    else
        pushValue(engine.dataStack, value);
}

void compileOrRun(ForthEngine& engine, pcode* word) {
    if (engine.compiling && !(word->flags & ForthImmediate))
        append(engine, std::make_unique<PCall>(word));
    else
        runChain(engine, word);
}

/// A number with an exponent, which is told by its characters alone.
std::optional<double> realOf(const QString& word) {
    QByteArray text = word.toUtf8();
    const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
    if (view.find_first_not_of("0123456789+-.eE") != view.npos || view.find_first_of("eE") == view.npos)
        return std::nullopt;
    if (view.ends_with('e') || view.ends_with('E')) text.append('0');
    return std::strtod(text.constData(), nullptr);
}

/// The value of a digit in any base up to 36; 36 for other characters.
unsigned digitOf(QChar character) {
    const ushort code = character.unicode();
    if (code >= '0' && code <= '9') return code - '0';
    if (code >= 'A' && code <= 'Z') return code - 'A' + 10;
    if (code >= 'a' && code <= 'z') return code - 'a' + 10;
    return 36;
}

/// Takes the prefix that names a base.
unsigned takeBase(QStringView& digits) {
    if (digits.isEmpty()) return 10;
    const ushort prefix = digits.front().unicode();
    if (prefix != '$' && prefix != '%' && prefix != '#') return 10;
    digits = digits.mid(1);
    return prefix == '$' ? 16 : prefix == '%' ? 2 : 10;
}

/// An integer of 32 bits; what stands behind its digits does not count. Throws code -13 for anything else,
/// which numbers with a point are, since there are no double cells.
std::int32_t integerOf(const QString& word) {
    QStringView digits(word);
    const bool isNegative = digits.startsWith(u'-');
    if (isNegative || digits.startsWith(u'+')) digits = digits.mid(1);
    const unsigned base = takeBase(digits);
    std::uint32_t value = 0;
    std::size_t digitCount = 0;
    std::size_t pointCount = 0;
    for (const QChar character : digits) {
        if (character == u'.') {
            ++pointCount;
            continue;
        }
        const unsigned digit = digitOf(character);
        if (digit >= base) break;
        value = value * base + digit;
        ++digitCount;
    }
    if (digitCount == 0 || pointCount > 0) throw ForthException(ForthUndefinedWord, word);
    return static_cast<std::int32_t>(isNegative ? 0 - value : value);
}

void interpretWord(ForthEngine& engine, const QString& word) {
    pcode* found = nullptr;
    if (engine.current != nullptr) {
        const auto entry = engine.current->find(word);
        if (entry != engine.current->end()) found = entry->second;
    }
    if (found == nullptr) found = findWord(engine, word);
    if (found != nullptr)
        compileOrRun(engine, found);
    else if (const std::optional<double> real = realOf(word))
        compileOrPush(engine, ForthValue::ofReal(*real));
    else
        compileOrPush(engine, ForthValue::ofInteger(integerOf(word)));
}

/// Puts the instruction pointer back when a chain has run or failed.
class ChainScope {
public:
    explicit ChainScope(ForthEngine& engine) : engine_(engine), instruction_(engine.instruction) {
        if (engine.nesting >= ForthStack::capacity) throw ForthException(ForthReturnStackOverflow);
        ++engine.nesting;
    }
    ChainScope(const ChainScope&) = delete;
    ChainScope& operator=(const ChainScope&) = delete;
    ~ChainScope() {
        --engine_.nesting;
        engine_.instruction = instruction_;
    }

private:
    ForthEngine& engine_;
    pcode* instruction_;
};

}  // namespace

void interpret(QString& result, ForthEngine& engine) {
    result.clear();
    engine.instruction = nullptr;
    engine.inputPosition = 0;
    try {
        for (;;) {
            const QString word = nextWord(engine, ' ', true, false);
            if (!word.isEmpty())
                interpretWord(engine, word);
            else if (engine.source->refill(engine) == 0)
                return;
        }
    } catch (const ForthException& exception) {
        result = errorText(exception);
        if (engine.errorSink != nullptr) engine.errorSink->error(result);
        engine.compiling = 0;
        engine.definition = nullptr;
    }
}

QString nextWord(ForthEngine& engine, char delimiter, bool notePosition, bool keepCase) {
    const auto isDelimiter = [delimiter](char c) { return c == delimiter; };
    const bool isBlank = delimiter == ' ';
    std::string word(isBlank ? take(engine, isGraphic, endsWord)
                             : take(engine, std::not_fn(isDelimiter), isDelimiter));
    if (!isBlank && engine.inputPosition < engine.source->text.size()) ++engine.inputPosition;
    if (notePosition) {
        engine.wordPosition = engine.source->position;
        engine.wordLine = engine.source->line;
        engine.wordFile = engine.source->fileName;
    }
    if (word.size() > longestWord) throw ForthException(ForthStringOverflow);
    if (!keepCase)
        std::ranges::transform(word, word.begin(),
                               [](char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c; });
    return QString::fromStdString(word);
}

pcode* findWord(const ForthEngine& engine, const QString& name) {
    for (std::size_t i = engine.searchOrderCount; i-- > 0;) {
        const auto entry = engine.searchOrder[i]->find(name);
        if (entry != engine.searchOrder[i]->end()) return entry->second;
    }
    return nullptr;
}

void pushValue(ForthStack& stack, const ForthValue& value) {
    if (stack.count == ForthStack::capacity) throw ForthException(ForthStackOverflow);
    stack.values[stack.count++] = value;
}

void runChain(ForthEngine& engine, pcode* first) {
    const ChainScope scope(engine);
    engine.instruction = first;
    while (engine.instruction != nullptr) {
        pcode* const node = engine.instruction;
        engine.instruction = node->next;
        node->execute(engine);
    }
}

}  // namespace script
