#include "cli/script_host.h"

#include "script/host_binding.h"

#include <cstdio>
#include <string>

namespace cli {

namespace {

using script::ESContext;
using script::ESResult;
using script::ESValue;

/// The text of `value` whatever its `toString` does.
std::string textOf(ESContext& context, const ESValue& value) {
    const ESResult text = context.describe(value);
    return text.status == ESResult::Normal ? context.toStringValue(text.value).toStdString() : std::string();
}

std::string propertyText(ESContext& context, const ESValue& object, const char16_t* name) {
    const ESValue value = context.get(object.asObject(), script::internAtom(QStringView(name)));
    return value.isUndefined() ? std::string() : textOf(context, value);
}

void printException(ESContext& context, const ESValue& value) {
    std::string text;
    if (script::isError(context, value)) {
        text = propertyText(context, value, u"message") + "\n" + propertyText(context, value, u"fileName") +
               ":" + propertyText(context, value, u"lineNumber") + "\n";
    } else {
        text = "Uncaught exception: " + textOf(context, value) + "\n";
    }
    std::fputs(text.c_str(), stderr);
}

}  // namespace

PrintClass::PrintClass(Output& output) : ESClass(QStringLiteral("Print")), output_(output) {}

void PrintClass::bind(ESContext& context) {
    context.installBuiltin(context.global, {"print", "print", 0, 0}, context.functionPrototype, this);
}

void PrintClass::call(ESContext& context, script::ESObject*, script::ESObject*, std::uint32_t argc,
                      ESValue* argv) {
    QString line;
    for (std::uint32_t i = 0; i < argc; ++i) {
        if (i > 0) line += QLatin1Char(' ');
        line += context.toStringValue(argv[i]);
    }
    output_ << line.toStdString() << "\n";
    argv[0] = ESValue();
}

bool evaluateText(ESContext& context, const QString& fileName, const QString& text,
                  const std::function<bool()>& showsValue, Output& output) {
    try {
        ESResult result = context.evaluate(fileName, text);
        if (result.status == ESResult::Normal && !result.value.isUndefined() && showsValue()) {
            result = context.describe(result.value);
            if (result.status == ESResult::Normal)
                output << context.toStringValue(result.value).toStdString() << "\n";
        }
        if (result.status == ESResult::Normal) return true;
        output.finish();
        printException(context, result.value);
    } catch (const script::ESFatalError& fault) {
        output.finish();
        reportError(fault.message.toStdString());
    }
    return false;
}

}  // namespace cli
