// Scripts and what they come to: the language as a script sees it.
#include "script/script_fixture.h"

namespace {

using script_test::Row;

// clang-format off
const Row values[] = {
    // Values and conversions.
    {"+'' + '|' + +'   ' + '|' + +'abc' + '|' + +' 12 ' + '|' + +'0x10'", "NaN|NaN|NaN|12|16"},
    {"'' + 1.5 + '|' + 0.1234567 + '|' + 100 + '|' + -7 + '|' + 1e21 + '|' + 1/0 + '|' + -1/0", "1.5|0.123457|100|-7|1e+21|Infinity|-Infinity"},
    {"(255).toString(16) + (-255).toString(16) + (5).toString(0) + (1.5).toString(2)", "ff-ff51.5"},
    {"1 + '2'", "12"},
    {"'3' * '4'", "12"},
    {"null + 1", "1"},
    {"undefined + 1", "NaN"},
    {"var r = ''; if (NaN <= 1) r += 1; if (1 <= NaN) r += 2; if (NaN < 1) r += 3; if (NaN >= 1) r += 4; r + '!'", "!"},
    {"('a' < 'b') + '|' + ('10' < 9)", "true|false"},
    {"typeof (NaN < 1)", "undefined"},
    {"(null == undefined) + '|' + ('1' == 1) + '|' + (true == '1') + '|' + (null == 0) + '|' + (NaN == NaN) + '|' + (NaN != NaN)", "true|true|true|false|false|true"},
    {"var o = {valueOf: function () {}, toString: function () { return 7 }}; o * 2", "14"},
    {"4294967296 | 0", "0"},
    {"(1 << 31) + '|' + (-1 >>> 28) + '|' + (-9 >> 1) + '|' + ~5 + '|' + (5 ^ 3) + '|' + (6 & 3)", "-2147483648|15|-5|-6|6|2"},
    {"7 % 3 + '|' + -7 % 3 + '|' + 5.5 % 2 + '|' + 7 % 0", "1|-1|1.5|NaN"},
    {"typeof null + typeof 1 + typeof '' + typeof true + typeof void 0 + typeof {} + typeof isNaN", "objectnumberstringbooleanundefinedobjectfunction"},
    {"'a' + ['b', ['c']] + {}", "ab,c[object Object]"},
    {"'' + this", "[object global]"},
    // The lexer.
    {"010 + '|' + 0x10 + '|' + .5 + '|' + 1.25e2 + '|' + 1.", "8|16|0.5|125|1"},
    {"'\\x41\\u0042\\103\\n\\q\\0'.length", "6"},
    {"'\\400' == ' 0'", "true"},
    {"1 /* to the end", "1"},
    {"1 // to the end", "1"},
    {"1 /* a\n b */ + 1", "2"},
    {"1e0", "1"},
    // Statements.
    {"a + 1; var a = 1", "undefined"},
    {"var a = 1; a + 1;", "2"},
    {"var a = 1", "undefined"},
    {"{ 1; { 2 } }", "2"},
    {"if (true) 5;", "undefined"},
    {"", "undefined"},
    {"1;;", "undefined"},
    {"function f() { return\n 5 } f()", "undefined"},
    {"var x = 1, y = 1\nx\n++y\ny", "2"},
    {"var n = 0; do { n++ } while (n < 3) n", "3"},
    {"for (;;) { break; } 'out'", "out"},
    {"var n = 0, t = ''; do { n++; if (n == 2) continue; t += n } while (n < 4); t", "134"},
    {"var t = ''; l: for (var i = 0; i < 3; i++) { for (;;) { t += i; continue l; } } t", "012"},
    {"var t = ''; l: { t += 1; break l; t += 2 } t", "1"},
    {"var t = ''; for (var i = 0; i < 5; i++) { switch (i) { case 1: continue; case 3: break; default: t += i } } t", "024"},
    {"var r; switch (2) { case 1: r = 'a'; case 2: r = 'b'; break; case 2: r = 'c' } r", "b"},
    {"var r = ''; switch (9) { case 1: r += 1; default: r += 'd'; case 2: r += 2 } r", "d2"},
    {"if (false) ; else 1; var i = 0; while (true) { if (i > 2) break; else i++ } i", "3"},
    {"continue; 3", "3"},
    {"f(); function f() { g = 4 } g", "4"},
    {"var before = typeof f; { function f() {} } before + typeof f", "undefinedfunction"},
    {"var i = 10; for (var a = 0, b = 3; a < b; a++) i++; i", "13"},
    {"var s = 0; for (var i = 3; i; i--) s += i; s", "6"},
    {"var o = {}; for (o.k in {z: 1}) if (o.k == 'z') break; o.k", "z"},
    // Expressions.
    {"var a = [1, 2]; var i = 0; a[i++] + '|' + a[i] + '|' + a[0]++ + '|' + --a[0] + '|' + i", "1|2|1|1|1"},
    {"var o = {a: 1}; o.a <<= 3; o.a += 'x'; o.a", "8x"},
    {"var o = {n: '5'}; o.n++ + '|' + o.n + '|' + ++o.n + '|' + typeof o.n", "5|6|7|number"},
    {"var o = {a: 1, 'b c': 2, 3: 4,}; o.a + o['b c'] + o[3]", "7"},
    {"var a = [1,]; a.length + '|' + [,].length + '|' + [].length + '|' + [1, , 3].hasOwnProperty('1')", "2|2|0|false"},
    {"function f() { return function () { return 6 } } f()()", "6"},
    {"(function (a, b) { return a + b })(2, 3)", "5"},
    {"[function () { return this.length }][0]()", "1"},
    {"(1, 2, 3)", "3"},
    {"false || 0 || 'x' && 'y'", "y"},
    {"var c = 0; function f() { c++; return false } f() && f(); f() || f(); c", "3"},
    {"true ? false ? 1 : 2 : 3", "2"},
    {"10 - 3 - 2 + '|' + (2 + 3 * 4 << 1 | 1)", "5|29"},
    {"1 < 2 == true", "true"},
    {"var x = y = 4; x + y", "8"},
    {"void 5", "undefined"},
    {"new Number(5).toFixed(2)", "5.00"},
    {"var a = {b: function (n) { this.d = n }}; new a.b(7).d", "7"},
    {"function f() { return function () { this.v = 3 } } new (f())().v", "3"},
    {"var n = 0; function F() { n++ } new F; new F(); n", "2"},
    {"function F() { return {k: 1} } new F().k", "1"},
    {"function F() {} F.prototype.x = 9; new F().x", "9"},
    {"function F() {} F.prototype = 3; '' + new F", "[object Object]"},
    // Functions and names.
    {"function f(a, b) { return typeof b } f(1)", "undefined"},
    {"function f(a, b) { var l = 5; return a + b + l } f(1, 2, 3)", "8"},
    {"function f(a, b) { var l = 5; return function () { return a + b + l++ + l } } f(1, 2, 3)()", "14"},
    {"function f(a, a) { return a } f(1, 2)", "2"},
    {"function f() { x9 = 1 } f(); x9", "1"},
    {"undeclared", "undefined"},
    {"var g = 1; (delete g) + '|' + g", "false|1"},
    {"function f() { return arguments } f(1) + '|' + typeof f", "undefined|function"},
    {"function f() { eval('var e = 3'); return typeof arguments } f() + e", "undefined3"},
    {"function counter() { var n = 0; return function () { return ++n } } var a = counter(), b = counter(); a(); a(); a() + '|' + b()", "3|1"},
    {"function out() { var v = '1'; function inc() { v++; v++; return v } return inc } out()()", "3"},
    {"function f() { return this.q } var o = {q: 4, f: f}; o.f() + '|' + o['f']()", "4|4"},
    {"var a = function b() { return 1 }; a == b", "true"},
    {"f.length + '|' + isNaN.length; function f(a, b) {}", "2|1"},
    {"var keys = ''; for (var k in function (a) {}) if (k == 'length' || k == 'prototype' || k == 'constructor') keys += k; keys", ""},
    {"(function (n) { return n ? (n + '').length + 1 : 0 })(1000)", "5"},
    // with.
    {"var o = {v: 1}; with (o) { v = 2; var w = v } o.v + '|' + w", "2|2"},
    {"var o = {x: 5}, f; with (o) f = function () { return x }; f()", "5"},
    {"var x = 'g'; function f() { for (;;) with ({x: 1}) break; return x } f()", "g"},
    {"var x = 'g', t = ''; for (var i = 0; i < 2; i++) { with ({x: i}) { t += x; continue } } t + x", "01g"},
    {"var x = 'g'; function f() { with ({x: 1}) return x } f() + x", "1g"},
    {"var x = 'g'; l: with ({x: 1}) { break l } x", "g"},
    {"var o = {d: 1}; with (o) { delete d } typeof o.d", "undefined"},
    {"var o = {n: '3'}, r; with (o) { r = n++ + '|' + ++n + '|' + n-- + '|' + --n } r", "3|5|5|3"},
    {"with ('text') length", "undefined"},
    {"var r; with ('text') r = length; r", "4"},
    // for-in.
    {"var n = 0; var o = {a: 1}; o.a = 2; function P() { this.a = 1 } P.prototype = o; var p = new P; for (k in p) if (k == 'a') n++; n", "1"},
    {"var o = {a: 1, b: 2, c: 3}; delete o.b; var t = ''; for (var k in o) if (o.hasOwnProperty(k)) t += k; t.length", "2"},
    {"var t = 0; for (var i in [5, 6, , 7]) if (!isNaN(i)) t += +i; t", "4"},
    {"function f() { var t = 0; for (var k in {zz: 1}) { if (k == 'zz') t++; (function () { return t })() } return t } f()", "1"},
};

const Row errors[] = {
    {"a === b;", "SyntaxError: expected ; found ==="},
    {"throw 1;", "SyntaxError: expected an expression, found throw"},
    {"try { } catch (e) { }", "SyntaxError: expected an expression, found try"},
    {"do x(); while (a);", "SyntaxError: expected { found an identifier"},
    {"09", "SyntaxError: expected ; found a number"},
    {"1e", "SyntaxError: expected ; found an identifier"},
    {"for (var a, b in c) ;", "SyntaxError: too many variables in for-in expression"},
    {"switch (1) { default: default: }", "SyntaxError: default case already defined"},
    {"switch (1) { 5 }", "SyntaxError: expected 'case' or 'default' but found 'a number'"},
    {"return 1", "SyntaxError: return not in a function"},
    {"break", "SyntaxError: 'break' not in a 'for' or 'while' loop"},
    {"while (1) break l", "SyntaxError: can't find label l"},
    {"l: { continue l; }", "SyntaxError: labeled 'continue' doesn't mark a loop"},
    {"1 = 2", "SyntaxError: not lsh?"},
    {"f()++", "SyntaxError: not lsh?"},
    {"1 += 2", "SyntaxError: not lsh?"},
    {"'a", "SyntaxError: end of file in string constant"},
    {"'a\n'", "SyntaxError: newline in string constant"},
    {"'\\x4'", "SyntaxError: malformed hex escape sequence"},
    {"#", "SyntaxError: unknown character '#'"},
    {"[1 2]", "SyntaxError: ']' or ',' expected, found a number"},
    {"({+:1})", "SyntaxError: number, string, or identifier expected in object initialiser"},
    {"x = ", "SyntaxError: expected an expression, found end of input"},
    {"null.x", "TypeError: can't convert null to an object"},
    {"undefined.x", "TypeError: can't convert undefined to an object"},
    {"(5)()", "TypeError: not a function object"},
    {"var o = {}; o.f()", "TypeError: not a function object"},
    {"new isNaN", "TypeError: new must be given a constructor object"},
    {"new 5", "TypeError: new must be given a constructor object"},
    {"'' + {toString: function () {}, valueOf: function () { return {} }}", "TypeError: type error: no default value"},
    {"function f(", "SyntaxError: expected an identifier found end of input"},
};
// clang-format on

TEST(Language, ScriptsComeToTheirValues) {
    script_test::expectValues(values);
}

TEST(Language, FaultsHaveTheirMessages) {
    script_test::expectValues(errors);
}

TEST(Language, SourceNestedTooDeeplyIsRefused) {
    for (const char* opening :
         {"(", "[", "{", "!", "-", "new ", "function(){", "a=", "{a:", "f(", "if(1)", "a?", "l:"}) {
        const std::string source = script_test::repeated(opening, 100000);
        EXPECT_THAT(script_test::outcome(source), testing::StartsWith("SyntaxError: ")) << opening;
    }
}

TEST(Language, LongSourcesAreNoDeepOnes) {
    EXPECT_EQ(script_test::outcome("0" + script_test::repeated("+1", 20000)), "20000");
    EXPECT_EQ(script_test::outcome("var a = {}; a.b = a; a" + script_test::repeated(".b", 5000) + " == a"),
              "true");
    EXPECT_EQ(script_test::outcome("var n = 0;" + script_test::repeated("n++;", 15000) + "n"), "15000");
    EXPECT_EQ(script_test::outcome("0" + script_test::repeated(",1", 100000)), "1");
}

TEST(Language, CodeBeyondItsOperandsIsAFatalError) {
    const std::string body = script_test::repeated("x = x + 1;", 9000);
    EXPECT_EQ(script_test::outcome("while (x) {" + body + "}"),
              "fatal: compiler error: patch constant too large");
    EXPECT_EQ(script_test::outcome("[" + script_test::repeated("1,", 70000) + "]"),
              "fatal: compiler error: patch constant too large");
}

TEST(Language, SyntaxErrorsKnowTheirLine) {
    script::ESContext context;
    script::initContext(context);
    const script::ESResult result =
        context.evaluate(QStringLiteral("file.js"), QStringLiteral("var a;\n\nx = )\n"));
    ASSERT_EQ(result.status, script::ESResult::Exception);
    EXPECT_EQ(script_test::property(context, result.value, "fileName"), "file.js");
    EXPECT_EQ(script_test::property(context, result.value, "lineNumber"), "3");
    EXPECT_EQ(script_test::property(context, result.value, "sourceLine"), "x = )");
}

}  // namespace
