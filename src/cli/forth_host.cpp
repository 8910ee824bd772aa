#include "cli/forth_host.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <functional>
#include <utility>

namespace cli {

namespace {

using script::ForthException;
using script::ForthValue;

/// Leaves the line at `BYE`.
struct Bye {};

/// The shortest text that reads back the same.
template <class Number>
std::string textOf(Number number) {
    std::array<char, 32> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string textOf(const ForthValue& value) {
    return value.type == script::ForthReal ? textOf(value.real) : textOf(value.integer);
}

double realOf(const ForthValue& value) {
    return value.type == script::ForthReal ? value.real : static_cast<double>(value.integer);
}

bool isReal(const ForthValue& a, const ForthValue& b) {
    return a.type == script::ForthReal || b.type == script::ForthReal;
}

/// Integers wrap.
template <class Operation>
ForthValue calculate(const ForthValue& a, const ForthValue& b, Operation operation) {
    if (isReal(a, b)) return ForthValue::ofReal(operation(realOf(a), realOf(b)));
    const auto left = static_cast<std::uint64_t>(a.integer);
    return ForthValue::ofInteger(
        static_cast<std::int64_t>(operation(left, static_cast<std::uint64_t>(b.integer))));
}

/// Rounds towards zero.
ForthValue divide(const ForthValue& a, const ForthValue& b) {
    if (realOf(b) == 0) throw ForthException(script::ForthDivideByZero);
    if (isReal(a, b)) return ForthValue::ofReal(realOf(a) / realOf(b));
    if (b.integer == -1) return calculate(ForthValue::ofInteger(0), a, std::minus<>());
    return ForthValue::ofInteger(a.integer / b.integer);
}

/// The rest has the sign of `a`.
ForthValue remainder(const ForthValue& a, const ForthValue& b) {
    if (isReal(a, b)) throw ForthException(script::ForthTypeMismatch);
    if (b.integer == 0) throw ForthException(script::ForthDivideByZero);
    return ForthValue::ofInteger(b.integer == -1 ? 0 : a.integer % b.integer);
}

}  // namespace

struct ForthHost::Words {
    using Body = void (*)(ForthHost& host);

    class Primitive : public script::pcode {
    public:
        Primitive(ForthHost& host, const QString& word, Body run) : pcode(word), host_(host), body_(run) {}
        void execute(script::ForthEngine&) override { body_(host_); }

    private:
        ForthHost& host_;
        Body body_;
    };

    struct Row {
        const char* name;
        std::uint32_t flags;
        Body body;
    };

    template <ForthValue (*operation)(const ForthValue&, const ForthValue&)>
    static void binary(ForthHost& host) {
        const ForthValue b = host.pop();
        const ForthValue a = host.pop();
        host.push(operation(a, b));
    }

    static ForthValue add(const ForthValue& a, const ForthValue& b) { return calculate(a, b, std::plus<>()); }
    static ForthValue subtract(const ForthValue& a, const ForthValue& b) {
        return calculate(a, b, std::minus<>());
    }
    static ForthValue multiply(const ForthValue& a, const ForthValue& b) {
        return calculate(a, b, std::multiplies<>());
    }

    static void print(ForthHost& host) { host.output_ += textOf(host.pop()) + " "; }

    static void printStack(ForthHost& host) {
        const script::ForthStack& stack = host.engine_.dataStack;
        for (std::size_t i = 0; i < stack.count; ++i) host.output_ += textOf(stack.values[i]) + " ";
    }

    static void duplicate(ForthHost& host) {
        const ForthValue top = host.pop();
        host.push(top);
        host.push(top);
    }

    static void drop(ForthHost& host) { host.pop(); }

    static void swapTop(ForthHost& host) {
        const ForthValue b = host.pop();
        const ForthValue a = host.pop();
        host.push(b);
        host.push(a);
    }

    static void over(ForthHost& host) {
        const ForthValue b = host.pop();
        const ForthValue a = host.pop();
        host.push(a);
        host.push(b);
        host.push(a);
    }

    /// The word is found once the definition has ended.
    static void beginDefinition(ForthHost& host) {
        const QString name = script::nextWord(host.engine_, ' ', false, false);
        if (name.isEmpty())
            throw ForthException(script::ForthInvalidArgument, QStringLiteral(": without a name"));
        auto definition = std::make_unique<script::ForthDefinition>(name);
        host.engine_.definition = definition.get();
        host.engine_.compiling = 1;
        host.owned_.push_back(std::move(definition));
    }

    static void endDefinition(ForthHost& host) {
        script::ForthDefinition* definition = host.engine_.definition;
        if (!host.engine_.compiling || definition == nullptr)
            throw ForthException(script::ForthCompileOnly, QStringLiteral(";"));
        definition->sealed = true;
        host.words_[definition->name] = definition;
        host.engine_.definition = nullptr;
        host.engine_.compiling = 0;
    }

    static void bye(ForthHost& host) {
        host.isFinished_ = true;
        throw Bye();
    }

    // clang-format off
    static constexpr Row rows[] = {
        {".", 0, print},
        {".S", 0, printStack},
        {"+", 0, binary<add>},
        {"-", 0, binary<subtract>},
        {"*", 0, binary<multiply>},
        {"/", 0, binary<divide>},
        {"MOD", 0, binary<remainder>},
        {"DUP", 0, duplicate},
        {"DROP", 0, drop},
        {"SWAP", 0, swapTop},
        {"OVER", 0, over},
        {":", 0, beginDefinition},
        {";", script::ForthImmediate, endDefinition},
        {"BYE", 0, bye},
    };
    // clang-format on
};

ForthHost::ForthHost() {
    for (const Words::Row& row : Words::rows) {
        const QString name = QString::fromLatin1(row.name);
        owned_.push_back(std::make_unique<Words::Primitive>(*this, name, row.body));
        owned_.back()->flags = row.flags;
        words_[name] = owned_.back().get();
    }
    engine_.searchOrder[0] = &words_;
    engine_.searchOrderCount = 1;
}

ForthHost::~ForthHost() = default;

QString ForthHost::run(std::string_view line) {
    if (isFinished_) return {};
    QString result;
    try {
        script::StringSource source(line);
        engine_.source = &source;
        script::interpret(result, engine_);
    } catch (const ForthException& tooLong) {
        result = script::errorText(tooLong);
        engine_.compiling = 0;
        engine_.definition = nullptr;
    } catch (const Bye&) {
        result.clear();
    }
    engine_.source = nullptr;
    return result;
}

std::string ForthHost::takeOutput() {
    return std::exchange(output_, std::string());
}

ForthValue ForthHost::pop() {
    script::ForthStack& stack = engine_.dataStack;
    if (stack.count == 0) throw ForthException(script::ForthStackUnderflow);
    return stack.values[--stack.count];
}

void ForthHost::push(const ForthValue& value) {
    script::pushValue(engine_.dataStack, value);
}

}  // namespace cli
