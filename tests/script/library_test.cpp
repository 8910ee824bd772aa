// Scripts and what they come to: the library.
#include "script/native_global.h"
#include "script/script_fixture.h"

#include <QFile>
#include <QTemporaryDir>

// The library's collator for localeAwareCompare stays until the process ends.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
    return "leak:QCollator";
}

namespace {

using script_test::Row;

// clang-format off
const Row values[] = {
    // Global functions.
    {"parseInt('0x10') + '|' + parseInt('010') + '|' + parseInt('12abc') + '|' + parseInt(' 7 8') + '|' + parseInt('ff', 16) + '|' + parseInt('') + '|' + parseInt('9', 1)", "16|8|NaN|7|255|NaN|NaN"},
    {"parseFloat('0.1') == 0.1", "false"},
    {"parseFloat('1.5 x') + '|' + parseFloat('x')", "1.5|NaN"},
    {"isNaN('x') + '|' + isFinite(1/0) + '|' + isFinite('3')", "true|false|true"},
    {"eval('1 + 1') + '|' + eval(5) + '|' + eval('1 +') + '|' + eval(new String('4'))", "2|5|undefined|4"},
    {"load('no such file')", "false"},
    // Object and Function.
    {"'' + Object() + typeof Object(5) + new Object('x').length", "[object Object]object1"},
    {"var o = {a: 1}; o.hasOwnProperty('a') + '|' + o.hasOwnProperty('toString') + '|' + Object.prototype.isPrototypeOf(o) + '|' + o.propertyIsEnumerable('a') + '|' + [].propertyIsEnumerable('length')", "true|false|true|true|false"},
    {"typeof new Number(3).valueOf() + new Object(4).toLocaleString()", "number[object Number]"},
    {"'' + isNaN + function () {}", "<<function>><<function>>"},
    {"Function('a', 'b', 'return a * b')(6, 7) + '|' + new Function('a, b', 'return a - b').length + '|' + Function()()", "42|2|undefined"},
    {"Function.prototype.length + '|' + Function.prototype()", "0|undefined"},
    // Array.
    {"[1,,3].join() + '|' + [1,,3].toString() + '|' + [1, null, 3].toString() + '|' + [].join() + '|' + [1, 2].join('-')", "1,3|1,undefined,3|1,,3||1-2"},
    {"[1,2].concat([undefined,3]).length + '|' + [1].concat(2, [3, 4])", "3|1,2,3,4"},
    {"var a = [1, 2, 3]; a.pop() + '|' + a.push(8, 9) + '|' + a.shift() + '|' + a + '|' + [].pop() + '|' + [].shift()", "3|4|1|2,8,9|undefined|undefined"},
    {"[1, 2, 3].reverse() + '|' + [1, , 3, 4].reverse().hasOwnProperty('2')", "3,2,1|false"},
    {"[1, 2, 3, 4].slice(1, 3) + '|' + [1, 2, 3].slice(-2) + '|' + [1, 2].slice(5) + '|' + [1, , 3].slice(1).hasOwnProperty('0')", "2,3|2,3||false"},
    {"[3, 20, 100, 1].sort() + '|' + [3, 20, 100, 1].sort(function (a, b) { return a - b }) + '|' + ['b', undefined, 'a'].sort()", "1,100,20,3|1,3,20,100|a,b,undefined"},
    {"var a = []; for (var i = 0; i < 500; i++) a[i] = (i * 7919) % 500; a.sort(function (x, y) { return x - y }); var ok = true; for (i = 0; i < 500; i++) ok = ok && a[i] == i; ok", "true"},
    {"var a = [5, 4, 3, 2, 1]; a.sort(function () { return 1 }); a.sort(function () { a.length = 0; a[9] = 1; return -1 }); 'safe'", "safe"},
    {"var a = [1, 2, 3]; a.length = 1; a.length + '|' + a[2] + '|' + a; ", "1|3|1"},
    {"var a = []; a[5] = 1; a['7'] = 2; a['x'] = 3; a[1e9] = 4; a.length", "1000000001"},
    {"var a = []; a[3000] = 'far'; for (var i = 0; i < 4000; i++) if (i != 3000) a[i] = i; a[3000] + a[2999] + a.length", "far29994000"},
    {"new Array(3).length + '|' + new Array(3, 4) + '|' + Array('7').length + '|' + Array().length", "3|3,4|1|0"},
    {"var a = [1, 2]; delete a[0]; a[0] + '|' + a.length + '|' + a.hasOwnProperty(0)", "undefined|2|false"},
    {"Array.prototype[1] = 'p'; var a = [5,,6]; a[1] + '|' + a.hasOwnProperty(1)", "p|false"},
    {"var o = {length: 2, 0: 'a', 1: 'b', join: [].join, push: [].push}; o.push('c'); o.join('') + o.length", "abc3"},
    // String.
    {"String() + '|' + String(5) + '|' + new String('abc').length + '|' + typeof new String", "undefined|5|3|object"},
    {"'a b'.split(' ').length + '|' + 'a,b,,c'.split(',') + '|' + 'abc'.split('x').length", "2|a,b,,c|1"},
    {"'aXbX'.replace('X', '-') + '|' + ' a  b '.trim() + '|' + 'abc'.match('b') + '|' + 'abc'.search('c')", "a-b-|a b|undefined|2"},
    {"'abc'.charAt(1) + 'abc'.charAt(9) + 'a1'.charAt(1) + 'abc'.charCodeAt(2) + 'a'.charCodeAt(-1)", "b199NaN"},
    {"'banana'.indexOf('a', 2) + '|' + 'banana'.indexOf('x') + '|' + 'banana'.indexOf('b', -5) + '|' + 'banana'.lastIndexOf('a') + '|' + 'banana'.lastIndexOf('a', 4)", "3|-1|0|5|3"},
    {"'hello'.slice(1, -1) + '|' + 'hello'.slice(-3) + '|' + 'hello'.substring(4, 1) + '|' + 'hello'.substring(2)", "ell|llo|ell|llo"},
    {"'aB'.toLowerCase() + 'aB'.toUpperCase() + 'aB'.toLocaleLowerCase() + 'aB'.toLocaleUpperCase()", "abABabAB"},
    {"'a'.concat('b', 3) + String.fromCharCode(72, 105) + ('a'.localeCompare('b') < 0)", "ab3Hitrue"},
    {"var s = new String('x'); s.length = 9; s.k = 1; s.length + s.k", "2"},
    {"String.prototype.twice = function () { return this + this }; 'ab'.twice()", "abab"},
    {"String.prototype.length", "1"},
    // Boolean and Number.
    {"Boolean('') + '|' + Boolean('0') + '|' + new Boolean(false).toString() + '|' + (new Boolean(false) ? 1 : 2)", "false|true|false|1"},
    {"Number('0x1F') + '|' + Number() + '|' + Number.MAX_VALUE + '|' + (Number.MIN_VALUE > 0) + '|' + Number.NEGATIVE_INFINITY", "31|NaN|1.79769e+308|true|-Infinity"},
    {"(1.005).toFixed(1) + '|' + (2).toFixed() + '|' + (1e21).toFixed(2).length", "1.0|2|25"},
    {"Number.MAX_VALUE = 5; Number.MAX_VALUE > 5", "true"},
    // Math.
    {"Math.max() + '|' + Math.min() + '|' + Math.max(1, 3, 2) + '|' + Math.min(1, 'x', 2) + '|' + 1 / Math.max(-0, 0)", "-Infinity|Infinity|3|NaN|Infinity"},
    {"1 / Math.round(-0.4) + '|' + Math.round(2.5) + '|' + Math.round(-2.5) + '|' + Math.floor(-1.5) + '|' + Math.ceil(1.2) + '|' + 1 / Math.abs(-0)", "-Infinity|3|-2|-2|2|Infinity"},
    {"Math.pow(2, 10) + Math.sqrt(16) + Math.atan2(0, 1) + Math.exp(0) + Math.log(1) + Math.sin(0)", "1029"},
    {"'' + Math + Math.PI + (Math.random() >= 0)", "[object Math]3.14159true"},
    {"var n = 0; for (var k in Math) if (k == 'abs' || k == 'PI') n++; n", "1"},
    // Date.
    {"new Date(2020, 1, 1).getFullYear() + '|' + new Date(2020, 1, 1).valueOf()", "-4713|0"},
    {"var d = new Date(0); d.setFullYear(2024, 2, 15); d.setHours(13, 14, 15, 16); d.getFullYear() + '-' + d.getMonth() + '-' + d.getDate() + ' ' + d.getHours() + ':' + d.getMinutes() + ':' + d.getSeconds() + '.' + d.getMilliseconds() + ' ' + d.getDay()", "2024-2-15 13:14:15.16 5"},
    {"var d = new Date(0); d.setFullYear(2024, 2, 15); d.setHours(13); d.setMonth(0); d.getMonth() + '|' + d.getDate() + '|' + d.getHours()", "0|15|13"},
    {"var d = new Date(0); d.setFullYear(2024, 1, 30) + '|' + d.getFullYear()", "NaN|NaN"},
    {"var d = new Date(0); d.setFullYear(1970, 0, 1); d.valueOf() / 86400000 + '|' + d.getTimezoneOffset()", "2440588|0"},
    {"var d = new Date(0); d.setFullYear(2024, 2, 15); d.setMinutes(90); d.getHours() + ':' + d.getMinutes() + ' ' + d", "1:30 Fri Mar 15 01:30:00 2024"},
    {"var d = new Date(0); d.setTime(9e15) + '|' + d.setTime('5') + '|' + d.getMilliseconds()", "NaN|5|5"},
    {"new Date().getFullYear() > 2000", "true"},
    // Errors.
    {"var e = new TypeError('m'); e.name + e.message + '|' + Error().message + '|' + Error('x').message + (Error.prototype.isPrototypeOf(e))", "TypeErrorm||xtrue"},
};

const Row errors[] = {
    {"(5).toFixed(21)", "RangeError: fraction digits should 0 through 20"},
    {"new Array(1.5)", "RangeError: bad length in array constructor"},
    {"var o = {t: [].toString}; o.t()", "TypeError: Array.prototype.toString requires an array"},
    {"[].sort(5)", "Error: Array.prototype.sort argument is not a function"},
    {"var o = {t: ''.toString}; o.t()", "TypeError: String.prototype.toString called on non-String object"},
    {"var o = {t: ''.valueOf}; o.t()", "TypeError: String.prototype.valueOf called on non-String object"},
    {"var o = {t: true.valueOf}; o.t()", "TypeError: Boolean.prototype.toString called on non-Boolean object"},
    {"var o = {t: (1).toString}; o.t()", "TypeError: Number.prototype.toString called on non-Number object"},
    {"var o = {t: (1).valueOf}; o.t()", "TypeError: Number.prototype.valueOf called on non-Number object"},
    {"var o = {t: new Date().getDate}; o.t()", "TypeError: Date object required"},
    {"Date()", "Error: bad signature in builtin call"},
    {"Function('a b', '')", "SyntaxError: expected end of input found an identifier"},
    {"var s = 'x'; while (true) s += s", "RangeError: string too long"},
    {"var a = []; a.length = 4294967295; a.sort()", "RangeError: array too long"},
    {"var s = 'aaaaaaaaaaaaaaaa'; for (var i = 0; i < 20; i++) s += s; s.replace('a', 'aaaaaaaaa')", "RangeError: string too long"},
};
// clang-format on

TEST(Library, ScriptsComeToTheirValues) {
    script_test::expectValues(values);
}

TEST(Library, FaultsHaveTheirMessages) {
    script_test::expectValues(errors);
}

TEST(Library, ArityAndFullNameOfEveryBuiltin) {
    script::ESContext context;
    script::initContext(context);
    const auto function = [&](const char* holder, const char* name) {
        const script::ESResult result = context.evaluate(
            QString(), QStringLiteral("%1.%2").arg(QLatin1String(holder), QLatin1String(name)));
        return result.value.asObject();
    };
    struct Builtin {
        const char* holder;
        const char* name;
        std::uint32_t arity;
        std::int32_t id;
    };
    for (const Builtin& row :
         {Builtin{"Math", "tan", 1, 18}, Builtin{"Math", "atan2", 2, 5},
          Builtin{"Date.prototype", "setUTCMinutes", 3, 32}, Builtin{"Date.prototype", "toUTCString", 0, 41},
          Builtin{"Array.prototype", "sort", 1, 11}, Builtin{"String", "fromCharCode", 0, 1},
          Builtin{"String.prototype", "trim", 0, 20}, Builtin{"Number.prototype", "valueOf", 0, 4}}) {
        const script::ESObject* builtin = function(row.holder, row.name);
        EXPECT_EQ(builtin->closure->arity, row.arity) << row.name;
        EXPECT_EQ(builtin->builtinId, row.id) << row.name;
        EXPECT_EQ(script_test::text(context, builtin->value), std::string(row.holder) + "." + row.name);
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
