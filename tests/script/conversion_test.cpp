// How values turn into numbers, texts, truths and objects, and how the operators use that.
#include "script/script_fixture.h"

namespace {

using script_test::Row;

// clang-format off
const Row numbers[] = {
    {"+undefined", "NaN"},
    {"+null", "0"},
    {"+true", "1"},
    {"+false", "0"},
    {"+''", "NaN"},
    {"+'   '", "NaN"},
    {"+'abc'", "NaN"},
    {"+' 12 '", "12"},
    {"+'\\t12\\n'", "12"},
    {"+'12abc'", "NaN"},
    {"+'1,5'", "NaN"},
    {"+'-7'", "-7"},
    {"+'+7'", "7"},
    {"+'.5'", "0.5"},
    {"+'5.'", "5"},
    {"+'1e3'", "1000"},
    {"+'1e999'", "NaN"},
    {"+'0x10'", "16"},
    {"+'0XfF'", "255"},
    {"+' 0x1 '", "1"},
    {"+'0x'", "NaN"},
    {"+'0xg'", "NaN"},
    {"+'-0x10'", "NaN"},
    {"+'0x1ffffffff'", "4294967295"},
    {"+'0x10000000000000000'", "NaN"},
    {"+[]", "NaN"},
    {"+[7]", "7"},
    {"+[1, 2]", "NaN"},
    {"+{}", "NaN"},
    {"+function () {}", "NaN"},
    {"+new Number(4)", "4"},
    {"+new String('8')", "8"},
    {"+new Boolean(true)", "1"},
    {"+this", "NaN"},
    {"1 / -0", "-Infinity"},
    {"1 / +'-0'", "-Infinity"},
};

const Row integers[] = {
    {"4294967296 | 0", "0"},
    {"2147483648 | 0", "-2147483648"},
    {"-2147483648 | 0", "-2147483648"},
    {"-2147483649 | 0", "2147483647"},
    {"1e20 | 0", "1661992960"},
    {"-1e20 | 0", "-1661992960"},
    {"NaN | 0", "0"},
    {"1 / 0 | 0", "0"},
    {"-1 / 0 | 0", "0"},
    {"1.9 | 0", "1"},
    {"-1.9 | 0", "-1"},
    {"'3.7' | 0", "3"},
    {"null | 0", "0"},
    {"-1 >>> 0", "4294967295"},
    {"-1.5 >>> 0", "4294967295"},
    {"-4294967297 >>> 0", "4294967295"},
    {"1e20 >>> 0", "1661992960"},
    {"-3000000000 >>> 0", "1294967296"},
    {"~2147483648", "2147483647"},
    {"~'x'", "-1"},
    {"1 << 31", "-2147483648"},
    {"1 << 32", "1"},
    {"1 << -1", "-2147483648"},
    {"-9 >> 1", "-5"},
    {"-9 >> 33", "-5"},
    {"-1 >>> 28", "15"},
    {"-1 >>> 32", "4294967295"},
    {"2147483647 + 1 >> 31", "-1"},
    {"String.fromCharCode(65536 + 65, -65471, 66.9)", "AAB"},
};

const Row texts[] = {
    {"'' + undefined", "undefined"},
    {"'' + null", "null"},
    {"'' + true + false", "truefalse"},
    {"'' + 0 + -0", "00"},
    {"'' + NaN", "NaN"},
    {"'' + 1 / 0 + -1 / 0", "Infinity-Infinity"},
    {"'' + 1.5", "1.5"},
    {"'' + 0.1234567", "0.123457"},
    {"'' + 100", "100"},
    {"'' + -7", "-7"},
    {"'' + 1023 + 1024", "10231024"},
    {"'' + 1e6", "1000000"},
    {"'' + 1e21", "1e+21"},
    {"'' + 1e-7", "1e-07"},
    {"'' + 1.0000001", "1"},
    {"'' + 1234567.5", "1.23457e+06"},
    {"'' + 9007199254740993", "9007199254740992"},
    {"'' + (Math.pow(2, 63) - 1024)", "9223372036854774784"},
    {"'' + Math.pow(2, 63)", "9.22337e+18"},
    {"'' + -Math.pow(2, 63)", "-9223372036854775808"},
    {"'' + [1, [2, 3]]", "1,2,3"},
    {"'' + {}", "[object Object]"},
    {"'' + function () {}", "<<function>>"},
    {"'' + new Number(1.5) + new String('s') + new Boolean(false)", "1.5sfalse"},
    {"'' + Math", "[object Math]"},
    {"'' + new TypeError('x')", "[object TypeError]"},
    {"'' + this", "[object global]"},
    {"(35).toString(36)", "z"},
    {"(255).toString(16)", "ff"},
    {"(-10).toString(2)", "-1010"},
    {"(-Math.pow(2, 63)).toString(16)", "-8000000000000000"},
    {"(0.5).toString(2)", "0.5"},
    {"(1 / 0).toString(2) + (NaN).toString(8)", "InfinityNaN"},
    {"(10).toString() + (10).toString(undefined) + (10).toString(0)", "101010"},
    {"(8).toString('8')", "10"},
    {"(255).toString(1) + (255).toString(37) + (255).toString(-16)", "255255255"},
};

const Row truths[] = {
    {"!undefined", "true"},
    {"!null", "true"},
    {"!false", "true"},
    {"!0", "true"},
    {"!-0", "true"},
    {"!NaN", "true"},
    {"!''", "true"},
    {"!'0'", "false"},
    {"!' '", "false"},
    {"!{}", "false"},
    {"![]", "false"},
    {"!new Boolean(false)", "false"},
    {"!new Number(0)", "false"},
    {"!-1", "false"},
    {"!(1 / 0)", "false"},
};

const Row types[] = {
    {"typeof undefined", "undefined"},
    {"typeof undeclared", "undefined"},
    {"typeof null", "object"},
    {"typeof true", "boolean"},
    {"typeof 1", "number"},
    {"typeof NaN", "number"},
    {"typeof 'x'", "string"},
    {"typeof ('x' + 1)", "string"},
    {"typeof {}", "object"},
    {"typeof []", "object"},
    {"typeof function () {}", "function"},
    {"typeof isNaN", "function"},
    {"typeof Function.prototype", "function"},
    {"typeof new String('x')", "object"},
    {"typeof Math", "object"},
    {"typeof this", "object"},
    {"typeof (NaN < 1)", "undefined"},
    {"typeof (NaN <= 1)", "boolean"},
    {"typeof void 0", "undefined"},
};

// Who is asked first, and what counts as an answer.
const Row primitives[] = {
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; o + 1", "5"},
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; o + ''", "4"},
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; String(o)", "x"},
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; o * 2", "8"},
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; (o < 5) + '' + (o < 'x')", "trueundefined"},
    {"var o = {valueOf: function () { return 4 }, toString: function () { return 'x' }}; (o == 4) + '' + (o == 'x')", "truefalse"},
    {"var o = {valueOf: function () {}, toString: function () { return 7 }}; o * 2", "14"},
    {"var o = {valueOf: function () { return {} }, toString: function () { return 7 }}; o + 1", "8"},
    {"var o = {valueOf: function () { return null }}; o + 1", "1"},
    {"var o = {valueOf: function () { return false }}; o + 1", "1"},
    {"var o = {valueOf: 5, toString: function () { return 'x' }}; o + ''", "x"},
    {"var o = {toString: function () {}, valueOf: function () { return 3 }}; String(o)", "3"},
    {"var l = '', o = {valueOf: function () { l += 'v' }, toString: function () { l += 's'; return 1 }}, r = o * 1 + String(o); r += o + ''; l", "vssvs"},
    {"'' + {toString: function () {}, valueOf: function () { return {} }}", "TypeError: type error: no default value"},
    {"1 * {toString: 1, valueOf: 1}", "TypeError: type error: no default value"},
    {"typeof (new Date + 1) + typeof (new Date - 1)", "stringnumber"},
    {"new Date(1) - 5", "-5"},
    {"(this == '[object global]') + '|' + (this + 1)", "true|[object global]1"},
    {"var o = {}; o[{toString: function () { return 'k' }}] = 1; o.k", "1"},
    {"var o = {}; o[1.5] = 1; o[null] = 2; o[true] = 3; o[undefined] = 4; o['1.5'] + o['null'] + o['true'] + o['undefined']", "10"},
    {"var o = {}; o[-0] = 'z'; o[0] + o['0']", "zz"},
    {"var o = {}; o[1e3] = 'm'; o['1000']", "m"},
    {"'1' + 2 + 3", "123"},
    {"1 + 2 + '3'", "33"},
    {"1 + null", "1"},
    {"1 + undefined", "NaN"},
    {"1 + true", "2"},
    {"'3' * '4'", "12"},
    {"'7' - 2", "5"},
    {"'7' / '2'", "3.5"},
    {"'7' % 4", "3"},
    {"[] + []", ""},
    {"[1] + [2]", "12"},
};

const Row objects[] = {
    {"(5).nothing", "undefined"},
    {"'abc'.nothing", "undefined"},
    {"true.nothing", "undefined"},
    {"'abc'.length", "3"},
    {"var k = 'length'; 'abcd'[k]", "4"},
    {"'abc'[0]", "undefined"},
    {"var s = 'abc'; s.x = 1; s.x", "undefined"},
    {"var s = new String('abc'); s.x = 1; s.x", "1"},
    {"Number.prototype.twice = function () { return this * 2 }; (21).twice()", "42"},
    {"Boolean.prototype.not = function () { return !this }; false.not()", "false"},
    {"null.x", "TypeError: can't convert null to an object"},
    {"undefined.x", "TypeError: can't convert undefined to an object"},
    {"null.x = 1", "TypeError: can't convert null to an object"},
    {"undefined[0] = 1", "TypeError: can't convert undefined to an object"},
    {"null.x()", "TypeError: can't convert null to an object"},
    {"delete undefined.x", "TypeError: can't convert undefined to an object"},
    {"null.x++", "TypeError: can't convert null to an object"},
    {"null.x += 1", "TypeError: can't convert null to an object"},
    {"for (var k in undefined) ;", "TypeError: can't convert undefined to an object"},
    {"with (null) ;", "TypeError: can't convert null to an object"},
};

const Row relations[] = {
    {"'a' < 'b'", "true"},
    {"'b' < 'a'", "false"},
    {"'a' < 'a'", "false"},
    {"'a' <= 'a'", "true"},
    {"'Z' < 'a'", "true"},
    {"'a' < 'ab'", "true"},
    {"'' < 'a'", "true"},
    {"'10' < '9'", "true"},
    {"'10' < 9", "false"},
    {"'10' > 9", "true"},
    {"'\\uffff' > '\\ud800\\udc00'", "true"},
    {"1 < 1", "false"},
    {"1 <= 1", "true"},
    {"-0 < 0", "false"},
    {"null < 1", "true"},
    {"null >= 0", "true"},
    {"undefined >= undefined", "false"},
    {"'x' < 1", "undefined"},
    {"'x' <= 1", "false"},
    {"1 > NaN", "undefined"},
    {"1 >= NaN", "false"},
    {"1 / 0 > 1e308", "true"},
    {"true > false", "true"},
    {"[2] > 1", "true"},
    {"var r = ''; if (NaN < 1) r += 1; if (NaN <= 1) r += 2; if (1 <= NaN) r += 3; if (NaN >= 1) r += 4; r + '!'", "!"},
    {"for (var n = 0; n < 'x'; n++) ; n", "0"},
};
// clang-format on

TEST(Conversion, ToNumbers) {
    script_test::expectValues(numbers);
}

TEST(Conversion, ToIntegers) {
    script_test::expectValues(integers);
}

TEST(Conversion, ToTexts) {
    script_test::expectValues(texts);
}

TEST(Conversion, ToTruths) {
    script_test::expectValues(truths);
}

TEST(Conversion, TypeNames) {
    script_test::expectValues(types);
}

TEST(Conversion, OfObjectsToPrimitives) {
    script_test::expectValues(primitives);
}

TEST(Conversion, ToObjects) {
    script_test::expectValues(objects);
}

TEST(Operators, Relations) {
    script_test::expectValues(relations);
}

/// For each pair of values whether `compare` holds.
std::string matrix(const char* compare) {
    const std::string values =
        "var o = {}, v = [undefined, null, true, false, 0, 1, NaN, '', '0', '1', 'a', o];";
    return script_test::outcome(values + "function holds(a, b) {" + compare +
                                " return 0 } var t = ''; for (var i = 0; i < v.length; i++) {"
                                "for (var j = 0; j < v.length; j++) t += holds(v[i], v[j]); t += ' ' } t");
}

TEST(Operators, LooseEquality) {
    EXPECT_EQ(matrix("if (a == b) return 1;"),
              "110000000000 "    // undefined
              "110000000000 "    // null
              "001001000100 "    // true
              "000110001000 "    // false
              "000110001000 "    // 0
              "001001000100 "    // 1
              "000000000000 "    // NaN
              "000000010000 "    // '', whose number is NaN
              "000110001000 "    // '0'
              "001001000100 "    // '1'
              "000000000010 "    // 'a'
              "000000000001 ");  // an object
    EXPECT_EQ(matrix("if (!(a != b)) return 1;"), matrix("if (a == b) return 1;"));
}

TEST(Operators, StrictEqualityInSwitch) {
    EXPECT_EQ(matrix("switch (a) { case b: return 1 }"),
              "100000000000 010000000000 001000000000 000100000000 000010000000 000001000000 "
              "000000000000 000000010000 000000001000 000000000100 000000000010 000000000001 ");
}

// clang-format off
const char* const logger = "var log = ''; function L(name, value) { log += name; return value } function F() { log += 'F' } var o = {f: F};";

// Sides that act are generated in an order of their own.
const Row orders[] = {
    {"L('a', 1) + L('b', 2)", "ab"},
    {"L('a', 1) < L('b', 2)", "ab"},
    {"L('a', 1) <= L('b', 2)", "ab"},
    {"L('a', 1) > L('b', 2)", "ba"},
    {"L('a', 1) >= L('b', 2)", "ba"},
    {"L('a', 1) > L('b', 2) > L('c', 3)", "cba"},
    {"L('a', 1) - L('b', 2) > L('c', 3)", "cab"},
    {"L('o', o).x = L('v', 1)", "vo"},
    {"L('o', o)[L('k', 'x')] = L('v', 1)", "vok"},
    {"L('o', o).x += L('v', 1)", "vo"},
    {"L('o', o)[L('k', 'x')] += L('v', 1)", "vok"},
    {"L('o', o)[L('k', 'x')]++", "ok"},
    {"L('o', o).f(L('a', 1), L('b', 2))", "aboF"},
    {"L('o', o)[L('k', 'f')](L('a', 1))", "aokF"},
    {"L('c', F)(L('a', 1))", "acF"},
    {"new (L('c', F))(L('a', 1))", "acF"},
    {"delete L('o', o)[L('k', 'x')]", "ok"},
    {"L('a', 0) && L('b', 1)", "a"},
    {"L('a', 1) && L('b', 1)", "ab"},
    {"L('a', 0) || L('b', 1)", "ab"},
    {"L('a', 1) || L('b', 1)", "a"},
    {"L('a', 0) && L('b', 1) || L('c', 1)", "ac"},
    {"L('a', 0) ? L('b', 1) : L('c', 1)", "ac"},
    {"L('a', 1), L('b', 1)", "ab"},
    {"[L('a', 1), , L('b', 1)]", "ab"},
    {"({x: L('a', 1), y: L('b', 1)})", "ab"},
    {"switch (L('s', 2)) { case L('a', 1): case L('b', 2): case L('c', 3): }", "sab"},
    {"for (L('i', 0); L('t', log.length < 5); L('u', 0)) L('b', 0)", "itbutbut"},
    {"do { L('b', 0) } while (L('t', log.length < 3))", "btbt"},
    {"for (var k in L('o', {})) if (k == 'x') L('b', 0)", "o"},
};

const Row values[] = {
    {"var x = 1; x += (x = 5, 1); x", "2"},
    {"var i = 0, a = []; a[i] = i++; a", "undefined,0"},
    {"var a = 1, b = a++ + ++a; a + '|' + b", "3|4"},
    {"var o = {n: '5'}; o.n++ + '|' + o.n + '|' + ++o.n + '|' + typeof o.n", "5|6|7|number"},
    {"var o = {}; o.n++ + '|' + o.n", "NaN|NaN"},
    {"var s = '3'; s++; typeof s + s", "number4"},
    {"var s = 'x'; s--; s", "NaN"},
    {"var o = {a: 6}; o.a -= 1; o.a *= 4; o.a /= 5; o.a %= 3; o.a", "1"},
    {"var o = {a: 6}; o.a &= 3; o.a |= 8; o.a ^= 1; o.a <<= 2; o.a >>= 1; o.a >>>= 1; o.a", "11"},
    {"var a = 6; a -= 1; a *= 4; a /= 5; a %= 3; a &= 3; a |= 8; a ^= 1; a <<= 2; a >>= 1; a >>>= 1; a", "8"},
    {"var o = {a: 1}; (o.a += 2) + o.a", "6"},
    {"var a, b; a = b = 3; a + b", "6"},
    {"0 || 'x'", "x"},
    {"0 && 'x'", "0"},
    {"1 && 'x'", "x"},
    {"'' || null || undefined", "undefined"},
    {"true ? false ? 1 : 2 : 3", "2"},
    {"2 + 3 * 4 - 6 / 3", "12"},
    {"1 + 2 << 1 | 8 & 12 ^ 4", "14"},
    {"10 - 3 - 2", "5"},
    {"2 * 6 % 4", "0"},
    {"-2 - -3", "1"},
    {"- -2 + + +1", "3"},
    {"!!2", "true"},
    {"~~-5.5", "-5"},
    {"7 % 0", "NaN"},
    {"-7 % 3", "-1"},
    {"5.5 % 2", "1.5"},
    {"1 / (-4 % 2)", "-Infinity"},
    {"4294967297 % 4294967296", "1"},
    {"0 / 0", "NaN"},
    {"1 == 1 != 0", "true"},
    {"3 > 2 > 1", "false"},
    {"void (1, 2)", "undefined"},
    {"typeof typeof 1", "string"},
    {"delete 5", "true"},
    {"var o = {x: 1}; delete o.x + '|' + delete o.x + '|' + delete o['y'] + '|' + o.x", "true|true|true|undefined"},
    {"function f(p) { var l; return delete p + '|' + delete l } f(1)", "false|false"},
};
// clang-format on

TEST(Operators, SidesActInOrder) {
    for (const Row& row : orders)
        EXPECT_EQ(script_test::outcome(std::string(logger) + row.source + "; log"), row.expected)
            << row.source;
}

TEST(Operators, Values) {
    script_test::expectValues(values);
}

}  // namespace
