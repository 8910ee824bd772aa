#include "script/native_number.h"

#include "script/context.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace script {

namespace {

enum Id : std::int32_t { Constructor = 0, ToString = 2, ToFixed = 3, ValueOf = 4 };

constexpr MethodRow methods[] = {{"toString", 1, ToString}, {"toFixed", 1, ToFixed}, {"valueOf", 0, ValueOf}};

struct ConstantRow {
    const char* name;
    double value;
};

constexpr ConstantRow constants[] = {
    {"MAX_VALUE", 1.7976931348623157e308},
    {"MIN_VALUE", 5e-324},
    {"NaN", std::numeric_limits<double>::quiet_NaN()},
    {"NEGATIVE_INFINITY", -std::numeric_limits<double>::infinity()},
    {"POSITIVE_INFINITY", std::numeric_limits<double>::infinity()},
};

ESValue toFixed(ESContext& context, ESObject* thisObject, const ESValue& argument) {
    constexpr double mostDigits = 20;
    const double digits = argument.isUndefined() ? 0 : context.toInteger(argument);
    if (digits < 0 || digits > mostDigits)
        context.throwRangeError(QStringLiteral("fraction digits should 0 through 20"));
    constexpr std::size_t longest = 400;
    std::array<char, longest> text{};
    const double number = context.toNumber(ESValue(thisObject));
    std::snprintf(text.data(), text.size(), "%40.*f", static_cast<int>(digits), number);
    return context.newString(QString::fromLatin1(text.data()).trimmed());
}

}  // namespace

ESNativeNumber::ESNativeNumber() : ESNativeClass(QStringLiteral("Number")) {}

void ESNativeNumber::install(ESContext& context) {
    ESObject* prototype = context.numberPrototype;
    prototype->cls = this;
    prototype->value = ESValue(0.0);
    ESObject* constructor = installClassConstructor(context, prototype, 1);
    for (const ConstantRow& row : constants)
        context.defineProperty(constructor, ReadOnly | DontEnumerate | DontDelete,
                               internAtom(QString::fromLatin1(row.name)), ESValue(row.value));
    installMethods(context, prototype, "Number.prototype", methods);
}

void ESNativeNumber::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                          ESValue* argv) {
    const auto requireNumber = [&](const QString& message) {
        if (thisObject->cls != this) context.throwTypeError(message);
    };
    switch (function->builtinId) {
        case Constructor:
            argv[0] = ESValue(context.toNumber(argv[0]));
            return;
        case ToString: {
            constexpr int decimal = 10;
            requireNumber(QStringLiteral("Number.prototype.toString called on non-Number object"));
            const int radix = context.toInt32(argv[0]);
            argv[0] =
                context.newString(context.toStringValue(thisObject->value, radix == 0 ? decimal : radix));
            return;
        }
        case ToFixed:
            argv[0] = toFixed(context, thisObject, argv[0]);
            return;
        case ValueOf:
            requireNumber(QStringLiteral("Number.prototype.valueOf called on non-Number object"));
            argv[0] = thisObject->value;
            return;
        default:
            ESNativeClass::call(context, function, thisObject, argc, argv);
    }
}

ESObject* ESNativeNumber::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    return context.toObject(ESValue(context.toNumber(argument(argc, argv, 0))));
}

}  // namespace script
