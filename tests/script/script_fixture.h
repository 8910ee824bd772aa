#pragma once

#include "script/context.h"
#include "script/host_binding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>

/// Evaluates scripts in contexts of their own.
namespace script_test {

struct Row {
    const char* source;
    const char* expected;
};

inline std::string text(script::ESContext& context, const script::ESValue& value) {
    const script::ESResult result = context.describe(value);
    return result.status == script::ESResult::Normal ? context.toStringValue(result.value).toStdString()
                                                     : "?";
}

inline std::string property(script::ESContext& context, const script::ESValue& object, const char* name) {
    return text(context, context.get(object.asObject(), script::internAtom(QString::fromUtf8(name))));
}

/// The text of the value of `source`; of an error its name and message, of a fatal one its message.
inline std::string outcome(script::ESContext& context, const std::string& source) {
    try {
        const script::ESResult result = context.evaluate(QString(), QString::fromStdString(source));
        if (result.status == script::ESResult::Normal) return text(context, result.value);
        if (!script::isError(context, result.value)) return "thrown: " + text(context, result.value);
        return property(context, result.value, "name") + ": " + property(context, result.value, "message");
    } catch (const script::ESFatalError& fault) {
        return "fatal: " + fault.message.toStdString();
    }
}

inline std::string outcome(const std::string& source) {
    script::ESContext context;
    script::initContext(context);
    return outcome(context, source);
}

inline void expectValues(std::span<const Row> rows) {
    for (const Row& row : rows) EXPECT_EQ(outcome(row.source), row.expected) << row.source;
}

inline std::string repeated(const std::string& part, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += part;
    return result;
}

}  // namespace script_test
