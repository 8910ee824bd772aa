// The global functions, objects, functions and errors of the library, and the list of all that is built in.
#include "script/native_global.h"
#include "script/script_fixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using script_test::Row;

// clang-format off
const Row functions[] = {
    {"parseInt('0x10')", "16"},
    {"parseInt('010')", "8"},
    {"parseInt('08')", "NaN"},
    {"parseInt('0')", "0"},
    {"parseInt('12')", "12"},
    {"parseInt('-12')", "-12"},
    {"parseInt('12abc')", "NaN"},
    {"parseInt('1.5')", "NaN"},
    {"parseInt(' 7 8')", "7"},
    {"parseInt('')", "NaN"},
    {"parseInt('   ')", "NaN"},
    {"parseInt()", "NaN"},
    {"parseInt('ff', 16)", "255"},
    {"parseInt('0xff', 16)", "255"},
    {"parseInt('101', 2)", "5"},
    {"parseInt('zz', 36)", "1295"},
    {"parseInt('11', '8')", "9"},
    {"parseInt('9', 1)", "NaN"},
    {"parseInt('9', 37)", "NaN"},
    {"parseInt('9', -10)", "NaN"},
    {"parseInt('0x1f', 0)", "31"},
    {"parseInt('2147483647')", "2147483647"},
    {"parseInt('2147483648')", "NaN"},
    {"parseFloat('0.1') == 0.1", "false"},
    {"parseFloat('0.5') == 0.5", "true"},
    {"parseFloat('1.5 x')", "1.5"},
    {"parseFloat('1.5x')", "NaN"},
    {"parseFloat('')", "NaN"},
    {"parseFloat()", "NaN"},
    {"parseFloat('16777217')", "16777216"},
    {"parseFloat('1e39')", "NaN"},
    {"isNaN('x') + '|' + isNaN(1) + '|' + isNaN() + '|' + isNaN('') + '|' + isNaN(null)", "true|false|true|true|false"},
    {"isFinite(1 / 0) + '|' + isFinite(-1 / 0) + '|' + isFinite(NaN) + '|' + isFinite('3')", "false|false|false|true"},
    {"load('no such file')", "false"},
    {"load('/')", "false"},
    {"new eval", "TypeError: new must be given a constructor object"},
};

const Row objects[] = {
    {"'' + Object() + Object(null) + new Object", "[object Object][object Object][object Object]"},
    {"typeof Object(5) + Object(5)", "object5"},
    {"new Object('abc').length + new Object(true)", "4"},
    {"var o = {}; Object(o) == o && new Object(o) == o", "true"},
    {"Object(5).constructor == Number && new Object('x').constructor == String", "true"},
    {"var o = {}; (o.valueOf() == o) + typeof new Number(3).valueOf()", "truenumber"},
    {"var n = new Number(3); n.v = {}.valueOf; typeof n.v()", "number"},
    {"new Object(4).toLocaleString() + [].valueOf() + {}.toLocaleString()", "[object Number][object Object]"},
    {"var a = [], t = {}.toString; a.t = t; a.t() + (function () {}.toString())", "[object Array]<<function>>"},
    {"var o = {a: 1}; o.hasOwnProperty('a') + '|' + o.hasOwnProperty('toString') + '|' + o.hasOwnProperty()", "true|false|false"},
    {"[7].hasOwnProperty(0) + '|' + [7].hasOwnProperty('0') + '|' + [7].hasOwnProperty(1) + '|' + [].hasOwnProperty('length')", "true|true|false|true"},
    {"Object.prototype.isPrototypeOf({}) + '|' + Array.prototype.isPrototypeOf([]) + '|' + Array.prototype.isPrototypeOf({}) + '|' + Object.prototype.isPrototypeOf(5)", "true|true|false|false"},
    {"var o = {a: 1}; o.propertyIsEnumerable('a') + '|' + o.propertyIsEnumerable('toString') + '|' + Math.propertyIsEnumerable('PI') + '|' + [7].propertyIsEnumerable('0')", "true|false|false|true"},
    {"var t = ''; for (var k in Object.prototype) t += k + ' '; t", "toString toLocaleString valueOf hasOwnProperty isPrototypeOf propertyIsEnumerable "},
    {"Math.propertyIsEnumerable('abs') + '|' + this.propertyIsEnumerable('isNaN') + '|' + this.propertyIsEnumerable('Object') + '|' + this.propertyIsEnumerable('Math')", "true|true|true|false"},
    {"Object.prototype.zz = 1; var o = {}; o.zz + [].zz + isNaN.zz + ''.zz + (1).zz", "5"},
};

const Row errors[] = {
    {"var e = new TypeError('m'); e.name + e.message", "TypeErrorm"},
    {"Error().message + '|' + Error('x').message + '|' + new Error(undefined).hasOwnProperty('message')", "|x|false"},
    {"typeof new Error(5).message", "number"},
    {"new RangeError().name + ReferenceError().name + SyntaxError().name + EvalError().name", "RangeErrorReferenceErrorSyntaxErrorEvalError"},
    {"Error.prototype.isPrototypeOf(new RangeError) + '|' + TypeError.prototype.isPrototypeOf(new RangeError)", "true|false"},
    {"new TypeError().constructor == TypeError", "true"},
    {"'' + new RangeError('x')", "[object RangeError]"},
    {"var t = ''; for (var k in new Error('x')) if (k == 'name' || k == 'message') t += k; t", "message"},
    {"delete Error.prototype.name", "false"},
};
// clang-format on

TEST(Library, GlobalFunctions) {
    script_test::expectValues(functions);
}

TEST(Library, Objects) {
    script_test::expectValues(objects);
}

TEST(Library, Errors) {
    script_test::expectValues(errors);
}

struct Builtin {
    const char* holder;
    const char* name;
    std::uint32_t arity;
    std::int32_t id;
};

// clang-format off
const Builtin builtins[] = {
    {"this", "eval", 1, 1},
    {"this", "parseInt", 2, 2},
    {"this", "parseFloat", 1, 3},
    {"this", "isNaN", 1, 4},
    {"this", "isFinite", 1, 5},
    {"this", "load", 1, 6},
    {"this", "Object", 1, 0},
    {"this", "Function", 1, 0},
    {"this", "Array", 0, 0},
    {"this", "String", 1, 0},
    {"this", "Boolean", 1, 0},
    {"this", "Number", 1, 0},
    {"this", "Date", 1, 0},
    {"this", "Error", 1, 0},
    {"this", "EvalError", 1, 0},
    {"this", "RangeError", 1, 0},
    {"this", "ReferenceError", 1, 0},
    {"this", "SyntaxError", 1, 0},
    {"this", "TypeError", 1, 0},
    {"Object.prototype", "toString", 0, 2},
    {"Object.prototype", "toLocaleString", 0, 3},
    {"Object.prototype", "valueOf", 0, 4},
    {"Object.prototype", "hasOwnProperty", 1, 5},
    {"Object.prototype", "isPrototypeOf", 1, 6},
    {"Object.prototype", "propertyIsEnumerable", 1, 7},
    {"Function.prototype", "toString", 0, 1},
    {"Array.prototype", "toString", 0, 2},
    {"Array.prototype", "toLocaleString", 0, 3},
    {"Array.prototype", "concat", 0, 4},
    {"Array.prototype", "join", 1, 5},
    {"Array.prototype", "pop", 0, 6},
    {"Array.prototype", "push", 0, 7},
    {"Array.prototype", "reverse", 0, 8},
    {"Array.prototype", "shift", 0, 9},
    {"Array.prototype", "slice", 2, 10},
    {"Array.prototype", "sort", 1, 11},
    {"String", "fromCharCode", 0, 1},
    {"String.prototype", "toString", 0, 2},
    {"String.prototype", "valueOf", 0, 3},
    {"String.prototype", "charAt", 1, 4},
    {"String.prototype", "charCodeAt", 1, 5},
    {"String.prototype", "concat", 0, 6},
    {"String.prototype", "indexOf", 2, 7},
    {"String.prototype", "lastIndexOf", 2, 8},
    {"String.prototype", "localeCompare", 1, 9},
    {"String.prototype", "match", 1, 10},
    {"String.prototype", "replace", 2, 11},
    {"String.prototype", "search", 1, 12},
    {"String.prototype", "slice", 2, 13},
    {"String.prototype", "split", 2, 14},
    {"String.prototype", "substring", 2, 15},
    {"String.prototype", "toLowerCase", 0, 16},
    {"String.prototype", "toLocaleLowerCase", 0, 17},
    {"String.prototype", "toUpperCase", 0, 18},
    {"String.prototype", "toLocaleUpperCase", 0, 19},
    {"String.prototype", "trim", 0, 20},
    {"Boolean.prototype", "toString", 0, 1},
    {"Boolean.prototype", "valueOf", 0, 2},
    {"Number.prototype", "toString", 1, 2},
    {"Number.prototype", "toFixed", 1, 3},
    {"Number.prototype", "valueOf", 0, 4},
    {"Math", "abs", 1, 1},
    {"Math", "acos", 1, 2},
    {"Math", "asin", 1, 3},
    {"Math", "atan", 1, 4},
    {"Math", "atan2", 2, 5},
    {"Math", "ceil", 1, 6},
    {"Math", "cos", 1, 7},
    {"Math", "exp", 1, 8},
    {"Math", "floor", 1, 9},
    {"Math", "log", 1, 10},
    {"Math", "max", 0, 11},
    {"Math", "min", 0, 12},
    {"Math", "pow", 2, 13},
    {"Math", "random", 0, 14},
    {"Math", "round", 1, 15},
    {"Math", "sin", 1, 16},
    {"Math", "sqrt", 1, 17},
    {"Math", "tan", 1, 18},
    {"Date.prototype", "toString", 0, 1},
    {"Date.prototype", "toDateString", 0, 2},
    {"Date.prototype", "toTimeString", 0, 3},
    {"Date.prototype", "toLocaleString", 0, 4},
    {"Date.prototype", "toLocaleDateString", 0, 5},
    {"Date.prototype", "toLocaleTimeString", 0, 6},
    {"Date.prototype", "valueOf", 0, 7},
    {"Date.prototype", "getTime", 0, 8},
    {"Date.prototype", "getFullYear", 0, 9},
    {"Date.prototype", "getUTCFullYear", 0, 10},
    {"Date.prototype", "getMonth", 0, 11},
    {"Date.prototype", "getUTCMonth", 0, 12},
    {"Date.prototype", "getDate", 0, 13},
    {"Date.prototype", "getUTCDate", 0, 14},
    {"Date.prototype", "getDay", 0, 15},
    {"Date.prototype", "getUTCDay", 0, 16},
    {"Date.prototype", "getHours", 0, 17},
    {"Date.prototype", "getUTCHours", 0, 18},
    {"Date.prototype", "getMinutes", 0, 19},
    {"Date.prototype", "getUTCMinutes", 0, 20},
    {"Date.prototype", "getSeconds", 0, 21},
    {"Date.prototype", "getUTCSeconds", 0, 22},
    {"Date.prototype", "getMilliseconds", 0, 23},
    {"Date.prototype", "getUTCMilliseconds", 0, 24},
    {"Date.prototype", "getTimezoneOffset", 0, 25},
    {"Date.prototype", "setTime", 1, 26},
    {"Date.prototype", "setMilliseconds", 1, 27},
    {"Date.prototype", "setUTCMilliseconds", 1, 28},
    {"Date.prototype", "setSeconds", 2, 29},
    {"Date.prototype", "setUTCSeconds", 2, 30},
    {"Date.prototype", "setMinutes", 2, 31},
    {"Date.prototype", "setUTCMinutes", 3, 32},
    {"Date.prototype", "setHours", 4, 33},
    {"Date.prototype", "setUTCHours", 4, 34},
    {"Date.prototype", "setDate", 1, 35},
    {"Date.prototype", "setUTCDate", 1, 36},
    {"Date.prototype", "setMonth", 2, 37},
    {"Date.prototype", "setUTCMonth", 2, 38},
    {"Date.prototype", "setFullYear", 3, 39},
    {"Date.prototype", "setUTCFullYear", 3, 40},
    {"Date.prototype", "toUTCString", 0, 41},
};
// clang-format on

TEST(Library, BuiltinsHaveTheirNamesAritiesAndIds) {
    script::ESContext context;
    script::initContext(context);
    for (const Builtin& row : builtins) {
        const std::string holder(row.holder);
        const script::ESResult result =
            context.evaluate(QString(), QString::fromStdString(holder + "." + row.name));
        ASSERT_TRUE(result.value.isObject()) << row.name;
        const script::ESObject* builtin = result.value.asObject();
        EXPECT_EQ(builtin->closure->arity, row.arity) << row.name;
        EXPECT_EQ(builtin->builtinId, row.id) << row.name;
        EXPECT_EQ(script_test::property(context, result.value, "length"), std::to_string(row.arity))
            << row.name;
        EXPECT_EQ(script_test::text(context, builtin->value),
                  (holder == "this" ? "" : holder + ".") + row.name);
        EXPECT_EQ(builtin->prototype, context.functionPrototype) << row.name;
    }
}

TEST(Library, LoadSearchesItsDirectoriesAndThrowsOn) {
    const QTemporaryDir directory;
    const auto write = [&](const char* name, const char* content) {
        QFile file(directory.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    };
    write("good.js", "loaded = 'yes'");
    write("bad.js", "\nnull.x");
    script::ESContext context;
    script::initContext(context);
    EXPECT_EQ(script_test::outcome(context, "load('good.js')"), "false");
    context.evaluate(QString(), QStringLiteral("1"));
    script::ESNativeGlobal& global = *context.globalClass;
    global.addLoadDirectory(directory.path());
    EXPECT_EQ(script_test::outcome(context, "load('good.js') + loaded"), "trueyes");
    const script::ESResult result =
        context.evaluate(QStringLiteral("main.js"), QStringLiteral("\n\n\nload('bad.js')"));
    ASSERT_EQ(result.status, script::ESResult::Exception);
    EXPECT_EQ(script_test::property(context, result.value, "fileName"),
              directory.filePath(QStringLiteral("bad.js")).toStdString());
    EXPECT_EQ(script_test::property(context, result.value, "lineNumber"), "2");
}

}  // namespace
