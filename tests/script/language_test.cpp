// Scripts and what they come to: the language as a script sees it.
#include "script/script_fixture.h"

namespace {

using script_test::Row;

// clang-format off
const Row values[] = {
    // The lexer.
    {"010", "8"},
    {"0777", "511"},
    {"00", "0"},
    {"0x10", "16"},
    {"0XfF", "255"},
    {"0x", "0"},
    {"0", "0"},
    {"0.5", "0.5"},
    {".5", "0.5"},
    {"1.", "1"},
    {"1.e2", "100"},
    {"1.25e2", "125"},
    {"5E-1", "0.5"},
    {"2e+3", "2000"},
    {"1e999", "Infinity"},
    {"1e-999", "0"},
    {"123456789012345678", "123456789012345696"},
    {"4.toFixed", "SyntaxError: expected ; found an identifier"},
    {"4..toFixed(1)", "4.0"},
    {"'\\x41\\u0042\\103'", "ABC"},
    {"'\\b\\f\\n\\r\\t'.charCodeAt(1) + '\\b\\f\\n\\r\\t'.length", "17"},
    {"'\\q\\'\\\"\\\\'", "q'\"\\"},
    {"'\\0'.charCodeAt(0)", "0"},
    {"'\\08'.length", "2"},
    {"'\\377'.charCodeAt(0)", "255"},
    {"'\\400' == ' 0'", "true"},
    {"'\\1234'", "S4"},
    {"'a\\\nb'.length", "3"},
    {"\"it's\" + 'a \"b\"'", "it'sa \"b\""},
    {"$_aZ9 = 1; $_aZ9", "1"},
    {"1 /**/ + /***/ 1", "2"},
    {"1//", "1"},
    {"1 /*/ + 5", "1"},
    {"1\t\v\f\x1a+1", "2"},
    {"var a = 3, b = 1; a+++b", "4"},
    {"var a = 3, b = 1; a-->b", "true"},
    {"7>>>1>>1", "1"},
    {"var x = 8; x>>>=1; x<<=2; x", "16"},
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
    {"var a = [], i = 0; for (a[i++] in {z: 1}) if (i > 3) break; a.length == i", "true"},
    {"var x = 1; if (x) if (!x) x = 2; else x = 3; x", "3"},
    {"var t = ''; for (var i = 0; i < 3; i++) { if (i == 1) continue; t += i } t", "02"},
    {"var t = ''; for (var i = 0; i < 2; i++) for (var j = 0; j < 2; j++) { if (j) continue; t += i + '' + j } t", "0010"},
    {"var n = 0; while (n < 5) { if (n == 3) break; n++ } n", "3"},
    {"var n = 0; while (n++ < 5) continue; n", "6"},
    {"var t = ''; a: for (var i = 0; i < 3; i++) { b: for (;;) { if (i == 1) continue a; if (i == 2) break a; t += i; break b } t += 'x' } t", "0x"},
    {"var t = ''; a: b: for (var i = 0; i < 3; i++) { if (i == 1) continue b; t += i } t", "02"},
    {"l: if (true) { break l; } 'after'", "after"},
    {"l: switch (1) { case 1: for (;;) break l } 'after'", "after"},
    {"l: break l; 'after'", "after"},
    {"var n = 0; do { if (n == 2) break; n++ } while (true) n", "2"},
    {"var n = 0; l: do { do { n++; continue l } while (true) } while (n < 3); n", "3"},
    {"switch ('1') { case 1: 'number'; default: var r = 'none' } r", "none"},
    {"var r; switch (NaN) { case NaN: r = 1; break; default: r = 2 } r", "2"},
    {"var r = ''; switch (3) { default: r += 'd'; case 1: r += 1; break; case 2: r += 2 } r", "d1"},
    {"switch (1) {} 'empty'", "empty"},
    {"function f(x) { switch (x) { case 'a': return 1; case 'b': return 2 } return 3 } f('a') + '' + f('b') + f('c')", "123"},
    {"switch (1) { case 1: function q() { return 7 } } q()", "7"},
    {"switch (1) { case 2: function q() { return 7 } } typeof q", "undefined"},
    {"if (1) ; else 5; 'x'", "x"},
    {"{ } 3", "3"},
    {"{ 1; ; }", "undefined"},
    {"while (false) ;", "undefined"},
    {"x = 5", "5"},
    {"x = 5; ;", "undefined"},
    {"l: 5", "undefined"},
    {"var i; for (i = 0; i < 2; i++) ; i", "2"},
    {"for (var i = 0, t = ''; ; i++) { if (i > 2) break; t += i } t", "012"},
    {"var i = 2; for (; i--;) ; i", "-1"},
    {"(1, 2, 3)", "3"},
    {"({a: 1, 'b c': 2, 3: 4,})['b c']", "2"},
    {"({1e3: 'k'})[1000]", "k"},
    {"({0x10: 'k'})['16']", "k"},
    {"({a: 1, a: 2}).a", "2"},
    {"var o = {}; o['1'] = 'x'; o[1] + o['01']", "xundefined"},
    {"var o = {}; o['a' + 'b'] = 1; o.ab", "1"},
    // for-in.
    {"var n = 0; var o = {a: 1}; o.a = 2; function P() { this.a = 1 } P.prototype = o; var p = new P; for (k in p) if (k == 'a') n++; n", "1"},
    {"var o = {a: 1, b: 2, c: 3}; delete o.b; var t = ''; for (var k in o) if (o.hasOwnProperty(k)) t += k; t.length", "2"},
    {"var t = 0; for (var i in [5, 6, , 7]) if (!isNaN(i)) t += +i; t", "4"},
    {"function f() { for (var k in {zz: 1}) if (k == 'zz') return k } f()", "zz"},
    {"for (var k = 'was' in {}) if (k == 'no') break; typeof k", "string"},
    {"var t = '', o = {a: 1}; for (var k in o) { if (k == 'a') { t += k; o.b = 1; delete o.a } if (k == 'b') t += k } t", "a"},
    {"var n = 0; for (var a in {x: 1}) for (var b in {x: 1}) if (a == 'x' && b == 'x') n++; n", "1"},
    {"var t = ''; for (var k in [7]) if (k == 0) t += typeof k; t", "string"},
    {"var n = 0; for (var k in 5) if (k == 'toFixed') n++; n", "1"},
};

const Row errors[] = {
    {"a === b;", "SyntaxError: expected ; found ==="},
    {"a !== b;", "SyntaxError: expected ; found !=="},
    {"a instanceof b", "SyntaxError: expected ; found an identifier"},
    {"a in b", "SyntaxError: expected ; found in"},
    {"/x/", "SyntaxError: expected an expression, found /"},
    {"({get x() { return 1 }})", "SyntaxError: expected : found an identifier"},
    {"({a: 1 b: 2})", "SyntaxError: expected , found an identifier"},
    {"a.1", "SyntaxError: expected ; found a number"},
    {"a.if", "SyntaxError: expected an identifier found if"},
    {"a[1", "SyntaxError: expected ] found end of input"},
    {"f(1 2)", "SyntaxError: expected ) found a number"},
    {"f(,)", "SyntaxError: expected an expression, found ,"},
    {"(1", "SyntaxError: expected ) found end of input"},
    {"a ? b", "SyntaxError: expected : found end of input"},
    {"var 1", "SyntaxError: expected an identifier found a number"},
    {"var a = ;", "SyntaxError: expected an expression, found ;"},
    {"var a b", "SyntaxError: expected ; found an identifier"},
    {"if a", "SyntaxError: expected ( found an identifier"},
    {"if (a", "SyntaxError: expected ) found end of input"},
    {"while a", "SyntaxError: expected ( found an identifier"},
    {"do { } a", "SyntaxError: expected while found an identifier"},
    {"for (;)", "SyntaxError: expected an expression, found )"},
    {"for (1;2)", "SyntaxError: expected ; found )"},
    {"for (a b) ;", "SyntaxError: expected ; found an identifier"},
    {"for (f() in {}) ;", "SyntaxError: not lsh?"},
    {"for (x = 1 in {}) ;", "SyntaxError: not lsh?"},
    {"function", "SyntaxError: expected ( found end of input"},
    {"function f(a,) {}", "SyntaxError: expected an identifier found )"},
    {"function f() { return 1", "SyntaxError: expected } found end of input"},
    {"{ 1", "SyntaxError: expected } found end of input"},
    {"switch (1) { case 1", "SyntaxError: expected : found end of input"},
    {"switch (1) { case 1:", "SyntaxError: expected 'case' or 'default' but found 'end of input'"},
    {"}", "SyntaxError: expected an expression, found }"},
    {"a\n=== b", "SyntaxError: expected an expression, found ==="},
    {"'\\u00g0'", "SyntaxError: malformed hex escape sequence"},
    {"'\\x", "SyntaxError: malformed hex escape sequence"},
    {"'\\", "SyntaxError: end of file in string constant"},
    {"'a\r'", "SyntaxError: newline in string constant"},
    {"\"'", "SyntaxError: end of file in string constant"},
    {"a @ b", "SyntaxError: unknown character '@'"},
    {"\u00e4 = 1", "SyntaxError: unknown character '\u00e4'"},
    {"a\\b", "SyntaxError: unknown character '\\'"},
    {"continue l", "SyntaxError: can't find label l"},
    {"l: 1; while (1) break l", "SyntaxError: can't find label l"},
    {"l: while (1) { (function () { break l }) }", "SyntaxError: can't find label l"},
    {"if (1) break", "SyntaxError: 'break' not in a 'for' or 'while' loop"},
    {"with ({}) break", "SyntaxError: 'break' not in a 'for' or 'while' loop"},
    {"l: with ({}) { continue l }", "SyntaxError: labeled 'continue' doesn't mark a loop"},
    {"l: switch (1) { case 1: continue l }", "SyntaxError: labeled 'continue' doesn't mark a loop"},
    {"this = 1", "SyntaxError: not lsh?"},
    {"f() = 1", "SyntaxError: not lsh?"},
    {"a + b = 1", "SyntaxError: not lsh?"},
    {"(a, b) = 1", "SyntaxError: not lsh?"},
    {"--1", "SyntaxError: not lsh?"},
    {"++a++", "SyntaxError: not lsh?"},
    {"a.b()()", "TypeError: can't convert undefined to an object"},
    {"Math.x()", "TypeError: not a function object"},
    {"var o = {f: 1}, k = 'f'; o[k]()", "TypeError: not a function object"},
    {"var o = {f: {}}; with (o) f()", "TypeError: not a function object"},
    {"function f() { var l; l() } f()", "TypeError: not a function object"},
    {"function f(p) { p() } f('x')", "TypeError: not a function object"},
    {"function f(p) { var l; p(); return function () { return p } } f(1)", "TypeError: not a function object"},
    {"function f(p) { var l; l(); return function () { return p } } f(1)", "TypeError: not a function object"},
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

TEST(Language, WordsThatNoStatementAccepts) {
    for (const char* word : {"catch", "class", "const", "debugger", "enum", "export", "extends", "finally",
                             "import", "super", "throw", "try", "in", "else", "case", "default"})
        EXPECT_EQ(script_test::outcome(word),
                  std::string("SyntaxError: expected an expression, found ") + word);
}

TEST(Language, ErrorsKnowTheirLine) {
    const struct {
        const char* source;
        const char* place;
    } rows[] = {
        {"var a;\n\nx = )\n", "3 x = )"},
        {"x = ", "1 x = "},
        {"'abc\n'", "1 'abc"},
        {"\n\n/* a\nb */ #", "4 b */ #"},
        {"a\r\nb\r\n= =", "3 = ="},
        {"break\n", "1 break"},
        {"\nfunction f() {\n  1 = 2 }", "3   1 = 2 }"},
        {"\nnull.x", "2 null.x"},
        {"function f() {\n  null.x() }\n\nf()", "2   null.x() }"},
        {"var a = 1,\n    b = null;\nvar c = a +\n    b.x", "4     b.x"},
        {"for (var i = 0; i < 2; i++)\n  if (i)\n    undefined.x()", "3     undefined.x()"},
        {"[3, 1].sort(\n  function () { return null.x })", "2   function () { return null.x })"},
        {"\n(5).toFixed(\n21)", "2 (5).toFixed("},
        {"-\n{valueOf: 1, toString: 1}", "1 -"},
        {"\n\n'' + {toString: function () {\n  return null.x }, valueOf: 0}",
         "4   return null.x }, valueOf: 0}"},
    };
    for (const auto& row : rows) {
        script::ESContext context;
        script::initContext(context);
        const script::ESResult result =
            context.evaluate(QStringLiteral("file.js"), QString::fromUtf8(row.source));
        ASSERT_EQ(result.status, script::ESResult::Exception) << row.source;
        EXPECT_EQ(script_test::property(context, result.value, "fileName"), "file.js");
        EXPECT_EQ(script_test::property(context, result.value, "lineNumber") + " " +
                      script_test::property(context, result.value, "sourceLine"),
                  row.place)
            << row.source;
    }
}

}  // namespace
