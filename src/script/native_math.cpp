#include "script/native_math.h"

#include "script/context.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>

namespace script {

namespace {

struct ConstantRow {
    const char* name;
    double value;
};

constexpr ConstantRow constants[] = {
    {"E", std::numbers::e},
    {"LN10", std::numbers::ln10},
    {"LN2", std::numbers::ln2},
    {"LOG2E", 1 / std::numbers::ln2},
    {"LOG10E", 1 / std::numbers::ln10},
    {"PI", std::numbers::pi},
    {"SQRT1_2", std::numbers::sqrt2 / 2},
    {"SQRT2", std::numbers::sqrt2},
};

double roundHalfUp(double x) {
    constexpr double half = 0.5;
    if (x == 0 || !std::isfinite(x)) return x;
    if (x < 0 && x >= -half) return -0.0;
    return std::floor(x + half);
}

double logarithm(double x) {
    return std::log(x);
}

/// +0 counts as greater than -0.
bool isGreater(double a, double b) {
    return a > b || (a == 0 && b == 0 && !std::signbit(a) && std::signbit(b));
}

double extreme(ESContext& context, std::uint32_t argc, const ESValue* argv, bool isMaximum) {
    const double infinity = std::numeric_limits<double>::infinity();
    double result = isMaximum ? -infinity : infinity;
    for (std::uint32_t i = 0; i < argc; ++i) {
        const double number = context.toNumber(argv[i]);
        if (std::isnan(number)) return number;
        if (isMaximum ? isGreater(number, result) : isGreater(result, number)) result = number;
    }
    return result;
}

double randomNumber() {
    constexpr double step = 3.0517578125e-5;  // 1 / 32768
    constexpr unsigned bits = 0x7fff;         // what every runtime's generator has at least
    const auto number =
        static_cast<unsigned>(std::rand());  // NOLINT(cert-msc30-c,cert-msc50-cpp): the host seeds it
    return (number & bits) * step;
}

enum Id : std::int32_t { Atan2 = 5, Max = 11, Min = 12, Pow = 13, Random = 14 };

/// All functions in the order of their ids from 1; `compute` where one number makes one number.
struct FunctionRow {
    const char* name;
    std::uint32_t arity;
    double (*compute)(double);
};

constexpr FunctionRow functions[] = {
    {"abs", 1, [](double x) { return std::fabs(x); }},
    {"acos", 1, [](double x) { return std::acos(x); }},
    {"asin", 1, [](double x) { return std::asin(x); }},
    {"atan", 1, [](double x) { return std::atan(x); }},
    {"atan2", 2, nullptr},
    {"ceil", 1, [](double x) { return std::ceil(x); }},
    {"cos", 1, [](double x) { return std::cos(x); }},
    {"exp", 1, [](double x) { return std::exp(x); }},
    {"floor", 1, [](double x) { return std::floor(x); }},
    {"log", 1, logarithm},
    {"max", 0, nullptr},
    {"min", 0, nullptr},
    {"pow", 2, nullptr},
    {"random", 0, nullptr},
    {"round", 1, roundHalfUp},
    {"sin", 1, [](double x) { return std::sin(x); }},
    {"sqrt", 1, [](double x) { return std::sqrt(x); }},
    {"tan", 1, [](double x) { return std::tan(x); }},
};

double compute(ESContext& context, std::int32_t id, std::uint32_t argc, const ESValue* argv) {
    const auto number = [&](std::uint32_t i) { return context.toNumber(argv[i]); };
    switch (id) {
        case Atan2: {
            const double y = number(0);
            return std::atan2(y, number(1));
        }
        case Max:
        case Min:
            return extreme(context, argc, argv, id == Max);
        case Pow: {
            const double base = number(0);
            return std::pow(base, number(1));
        }
        case Random:
            return randomNumber();
        default:
            return functions[id - 1].compute(number(0));
    }
}

}  // namespace

ESNativeMath::ESNativeMath() : ESNativeClass(QStringLiteral("Math")) {}

void ESNativeMath::install(ESContext& context) {
    ESObject* math = setUp(context);
    for (const ConstantRow& row : constants)
        context.defineProperty(math, ReadOnly | DontEnumerate | DontDelete,
                               internAtom(QString::fromLatin1(row.name)), ESValue(row.value));
    std::int32_t id = 1;
    for (const FunctionRow& row : functions) {
        const MethodRow method{row.name, row.arity, id++};
        installMethods(context, math, "Math", {&method, 1});
    }
}

void ESNativeMath::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                        ESValue* argv) {
    const std::int32_t id = function->builtinId;
    if (id < 1 || id > static_cast<std::int32_t>(std::size(functions)))
        return ESNativeClass::call(context, function, thisObject, argc, argv);
    argv[0] = ESValue(compute(context, id, argc, argv));
}

}  // namespace script
