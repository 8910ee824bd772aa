#include "script/native_global.h"

#include "script/context.h"
#include "script/limits.h"
#include "script/native_boolean.h"
#include "script/native_number.h"
#include "script/native_string.h"

#include <QFile>

#include <cmath>
#include <limits>

namespace script {

namespace {

enum Id : std::int32_t { Eval = 1, ParseInt = 2, ParseFloat = 3, IsNaN = 4, IsFinite = 5, Load = 6 };

constexpr MethodRow functions[] = {
    {"eval", 1, Eval},   {"parseInt", 2, ParseInt}, {"parseFloat", 1, ParseFloat},
    {"isNaN", 1, IsNaN}, {"isFinite", 1, IsFinite}, {"load", 1, Load},
};

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The first part between blanks, or an empty text.
QString firstWord(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words.isEmpty() ? QString() : words.front();
}

int radixOf(const QString& word) {
    constexpr int octal = 8;
    constexpr int decimal = 10;
    constexpr int hexadecimal = 16;
    if (word.startsWith(u"0x")) return hexadecimal;
    return word.startsWith(u'0') ? octal : decimal;
}

double parseInt(ESContext& context, const ESValue& text, const ESValue& radixValue) {
    constexpr int largestRadix = 36;
    const QString word = firstWord(context.toStringValue(text));
    const int radix = radixValue.isUndefined() ? radixOf(word) : context.toInt32(radixValue);
    // QString knows no others; 0 lets it guess by the prefix.
    if (radix < 0 || radix == 1 || radix > largestRadix) return notANumber;
    bool isNumber = false;
    const int number = word.toInt(&isNumber, radix);
    return isNumber ? number : notANumber;
}

double parseFloat(ESContext& context, const ESValue& text) {
    bool isNumber = false;
    const float number = firstWord(context.toStringValue(text)).toFloat(&isNumber);
    return isNumber ? static_cast<double>(number) : notANumber;
}

}  // namespace

ESNativeGlobal::ESNativeGlobal() : ESNativeClass(QStringLiteral("global")) {}

void ESNativeGlobal::install(ESContext& context) {
    const auto constant = [&](const char16_t* constantName, const ESValue& value) {
        context.defineProperty(context.global, DontEnumerate, internAtom(QStringView(constantName)), value);
    };
    constant(u"NaN", ESValue(notANumber));
    constant(u"Infinity", ESValue(std::numeric_limits<double>::infinity()));
    constant(u"undefined", ESValue());
    installMethods(context, context.global, "", functions);
}

void ESNativeGlobal::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                          ESValue* argv) {
    switch (function->builtinId) {
        case Eval:
            argv[0] = eval(context, argv[0]);
            return;
        case ParseInt:
            argv[0] = ESValue(parseInt(context, argv[0], argv[1]));
            return;
        case ParseFloat:
            argv[0] = ESValue(parseFloat(context, argv[0]));
            return;
        case IsNaN:
            argv[0] = ESValue::boolean(std::isnan(context.toNumber(argv[0])));
            return;
        case IsFinite:
            argv[0] = ESValue::boolean(std::isfinite(context.toNumber(argv[0])));
            return;
        case Load:
            argv[0] = load(context, context.toStringValue(argv[0]));
            return;
        default:
            ESNativeClass::call(context, function, thisObject, argc, argv);
    }
}

ESValue ESNativeGlobal::eval(ESContext& context, const ESValue& source) {
    ESValue text = source;
    if (text.isObject()) {
        const ESClass* cls = text.asObject()->cls;
        const bool isWrapper = cls == context.booleanClass.get() || cls == context.numberClass.get() ||
                               cls == context.stringClass.get();
        if (isWrapper) text = text.asObject()->value;
    }
    if (!text.isString()) return text;
    const ESResult result = context.evaluate(QString(), context.toStringValue(text));
    return result.status == ESResult::Normal ? result.value : ESValue();
}

ESValue ESNativeGlobal::load(ESContext& context, const QString& fileName) {
    QStringList paths{fileName};
    for (const QString& directory : loadDirectories_) paths.append(directory + QLatin1Char('/') + fileName);
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) continue;
        // Devices have no end, so the reading has one.
        const QByteArray bytes = file.read(limits::stringLength + 1);
        if (bytes.size() > limits::stringLength)
            context.throwRangeError(QStringLiteral("script file too long"));
        const ESResult result = context.evaluate(path, QString::fromUtf8(bytes));
        if (result.status == ESResult::Exception) throw ESException{result.value};
        return ESValue::boolean(true);
    }
    return ESValue::boolean(false);
}

}  // namespace script
