// What a host sees: results, bindings, and the registers between evaluations.
#include "script/console_context.h"
#include "script/native_object.h"
#include "script/script_fixture.h"

namespace {

using script::ESContext;
using script::ESObject;
using script::ESResult;
using script::ESValue;
using script_test::outcome;

class Host : public testing::Test {
protected:
    Host() { script::initContext(context_); }

    ESResult evaluate(const char* source) { return context_.evaluate(QString(), QString::fromUtf8(source)); }

    ESContext context_;
};

TEST_F(Host, ResultsTellHowItWent) {
    const ESResult sum = evaluate("1 + 1");
    EXPECT_EQ(sum.status, ESResult::Normal);
    EXPECT_TRUE(sum.value.isNumber());
    EXPECT_EQ(sum.value.asNumber(), 2);
    EXPECT_TRUE(evaluate("var a").value.isUndefined());
    const ESResult fault = evaluate("x = ");
    EXPECT_EQ(fault.status, 4U);
    EXPECT_TRUE(isError(context_, fault.value));
    EXPECT_TRUE(fault.message.isEmpty());
    EXPECT_EQ(script_test::property(context_, fault.value, "lineNumber"), "1");
    EXPECT_EQ(script_test::property(context_, fault.value, "sourceLine"), "x = ");
    EXPECT_EQ(script_test::property(context_, fault.value, "fileName"), "undefined");
    EXPECT_EQ(outcome(context_, "null.x"), "TypeError: can't convert null to an object");
    EXPECT_FALSE(isError(context_, ESValue(1.0)));
    EXPECT_FALSE(isError(context_, evaluate("({})").value));
}

TEST_F(Host, VariablesLastFromTextToText) {
    evaluate("var n = 1; function f() { return ++n }");
    evaluate("f()");
    EXPECT_EQ(outcome(context_, "f() + n"), "6");
    evaluate("null.x(); n = 100");
    EXPECT_EQ(outcome(context_, "n"), "3");
}

/// Functions of one host object, each a case of `call`.
class DeviceClass : public script::ESClass {
public:
    DeviceClass() : ESClass(QStringLiteral("Device")) {}

    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override {
        switch (function->builtinId) {
            case 0:
                argv[0] = ESValue(static_cast<double>(argc));
                return;
            case 1:
                argv[0] = ESValue(context.toNumber(argv[0]) + context.toNumber(argv[1]));
                return;
            case 2:
                argv[0] = context.callFunction(argv[0].asObject(), thisObject, argc - 1, argv + 1);
                return;
            case 3:
                context.throwTypeError(context.toStringValue(argv[0]));
            default:
                return;
        }
    }
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue*) override {
        if (function->builtinId == 5) return nullptr;
        ESObject* made = context.newObject(context.objectPrototype, this);
        context.put(made, script::internAtom(u"given"), ESValue(static_cast<double>(argc)));
        return made;
    }
};

class Binding : public Host {
protected:
    Binding() {
        ESObject* device = context_.newObject(context_.objectPrototype, &class_);
        context_.defineProperty(context_.global, script::DontEnumerate, script::internAtom(u"Device"),
                                ESValue(device));
        const script::ESBuiltinDescriptor functions[] = {
            {"count", "Device.count", 0, 0, false, "counts its arguments"},
            {"sum", "Device.sum", 2, 1},
            {"apply", "Device.apply", 1, 2},
            {"fail", "Device.fail", 1, 3},
            {"Make", "Device.Make", 0, 4, true},
            {"Refuse", "Device.Refuse", 0, 5, true},
            {"nothing", "Device.nothing", 1, 99},
        };
        for (const auto& function : functions)
            context_.installBuiltin(device, function, context_.functionPrototype, &class_);
    }

    DeviceClass class_;
};

TEST_F(Binding, FunctionsOfAHost) {
    // clang-format off
    const script_test::Row rows[] = {
        {"Device.count() + Device.count(1, 2)", "2"},
        {"Device.sum(1, '2')", "3"},
        {"Device.sum(1)", "NaN"},
        {"Device.sum(1, 2, 3)", "3"},
        {"Device.apply(function (a, b) { return a + b + typeof this }, 1, 2)", "3object"},
        {"Device.apply(function () { return this == Device })", "true"},
        {"Device.apply(Math.max, 4, 9, 2)", "9"},
        {"Device.apply(Device.apply, Device.sum, 1, 2)", "3"},
        {"Device.fail('because')", "TypeError: because"},
        {"Device.nothing('kept')", "kept"},
        {"Device.count.help + Device.sum.help", "counts its argumentsundefined"},
        {"Device.sum.length + '' + Device.sum", "2<<function>>"},
        {"new Device.Make(1, 2).given", "2"},
        {"'' + new Device.Make", "[object Device]"},
        {"new Device.Refuse", "Error: Device.Refuse failed to generate an object"},
        {"new Device.sum", "TypeError: new must be given a constructor object"},
        {"var t = ''; for (var k in this) if (k == 'Device') t += k; t", ""},
        {"Device.extra = 1; Device.extra", "1"},
        {"'' + Device", "[object Device]"},
    };
    // clang-format on
    for (const auto& row : rows) EXPECT_EQ(outcome(context_, row.source), row.expected) << row.source;
}

TEST_F(Binding, AHostCallsAndConstructs) {
    ESObject* add = evaluate("function add(a, b) { return a + b + typeof this } add").value.asObject();
    const ESValue arguments[] = {ESValue(1.0), ESValue(2.0)};
    EXPECT_EQ(script_test::text(context_, context_.callFunction(add, nullptr, 2, arguments)), "3object");
    ESObject* point = evaluate("function Point(x) { this.x = x } Point").value.asObject();
    EXPECT_EQ(script_test::property(context_, ESValue(context_.construct(point, 1, arguments)), "x"), "1");
    EXPECT_THROW(context_.callFunction(evaluate("({})").value.asObject(), nullptr, 0, nullptr),
                 script::ESException);
    EXPECT_EQ(outcome(context_, "1 + 1"), "2");
}

TEST_F(Host, ArraysBecomeIntegers) {
    const auto integers = [&](const char* source) -> std::string {
        std::uint32_t count = 0;
        const auto numbers = arrayToInts(context_, evaluate(source).value, count);
        std::string text;
        for (std::uint32_t i = 0; i < count; ++i) text += std::to_string(numbers[i]) + " ";
        return numbers == nullptr ? "none" : text;
    };
    EXPECT_EQ(integers("[1, '2', 4294967295, 3.9, 'x', , 2147483648]"), "1 2 -1 3 0 0 -2147483648 ");
    EXPECT_EQ(integers("[]"), "none");
    for (const char* source : {"5", "({})", "'abc'", "undefined"}) {
        try {
            integers(source);
            ADD_FAILURE() << source;
        } catch (const script::ESException& exception) {
            EXPECT_EQ(script_test::property(context_, exception.value, "message"), "array argument expected");
        }
    }
}

TEST_F(Host, PropertiesKeepTheirAttributes) {
    ESObject* object = context_.newObject(context_.objectPrototype, context_.objectClass.get());
    context_.defineProperty(context_.global, 0, script::internAtom(u"o"), ESValue(object));
    const auto define = [&](const char16_t* name, std::uint32_t attributes) {
        context_.defineProperty(object, attributes, script::internAtom(QStringView(name)), ESValue(1.0));
    };
    define(u"readOnly", script::ReadOnly);
    define(u"hidden", script::DontEnumerate);
    define(u"kept", script::DontDelete);
    define(u"plain", 0);
    // clang-format off
    const script_test::Row rows[] = {
        {"o.readOnly = 2; o.hidden = 2; o.kept = 2; o.plain = 2; o.readOnly + '' + o.hidden + o.kept + o.plain", "1222"},
        {"o.readOnly++; o.readOnly += 5; o.readOnly", "1"},
        {"var t = ''; for (var k in o) if (o.hasOwnProperty(k)) t += k.charAt(0); t.length + '' + t.indexOf('h')", "3-1"},
        {"delete o.readOnly + '|' + delete o.hidden + '|' + delete o.kept + '|' + delete o.plain", "true|true|false|true"},
        {"o.readOnly = 3; o.readOnly", "3"},
    };
    // clang-format on
    for (const auto& row : rows) EXPECT_EQ(outcome(context_, row.source), row.expected) << row.source;
    EXPECT_EQ(object->properties.size(), 5U);
}

TEST(ConsoleContext, EndsAScriptWhenItIsTold) {
    script::MyESContext2 context;
    script::initContext(context);
    context.keepRunning = false;
    EXPECT_EQ(context.evaluate(QString(), QStringLiteral("while (1) {}")).status, ESResult::Normal);
    context.keepRunning = true;
    EXPECT_EQ(outcome(context, "for (var i = 0; i < 100; i++) ; i"), "100");
}

}  // namespace
