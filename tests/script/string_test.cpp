// Strings: their methods, and how they are kept.
#include "script/script_fixture.h"

// The library's collator for localeAwareCompare stays until the process ends.
extern "C" const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() {
    return "leak:QCollator";
}

namespace {

using script_test::outcome;
using script_test::Row;

// clang-format off
const Row wrappers[] = {
    {"String()", "undefined"},
    {"String(5) + String(null)", "5null"},
    {"typeof String(5)", "string"},
    {"typeof new String", "object"},
    {"new String + ''", "undefined"},
    {"new String('abc').length", "3"},
    {"new String('abc').valueOf()", "abc"},
    {"new String('abc').hasOwnProperty('length')", "false"},
    {"var s = new String('x'); s.length = 9; s.length", "1"},
    {"var s = new String('x'); s.k = 1; s.k", "1"},
    {"String.prototype.length", "1"},
    {"String.prototype.length = 5; String.prototype.length", "1"},
    {"delete String.prototype.length", "false"},
    {"String.prototype.twice = function () { return this + this }; 'ab'.twice()", "abab"},
    {"String.prototype.self = function () { return this }; typeof 'ab'.self() + ('ab'.self().x = 1)", "object1"},
    {"var s = new String('abc'); s.toString = function () { return 'own' }; s.charAt(0) + s", "oabc"},
    {"String.prototype.toString = function () { return 'all' }; 'abc'.charAt(1)", "l"},
    {"var o = {t: ''.toString}; o.t()", "TypeError: String.prototype.toString called on non-String object"},
    {"var o = {t: ''.valueOf}; o.t()", "TypeError: String.prototype.valueOf called on non-String object"},
    // A wrapper may come to hold what is no text, since setTime stores into whatever it is called on.
    {"var s = new String('abc'); s.setTime = new Date().setTime; s.setTime(5); s.charAt(0) + s.length", "51"},
    {"var s = new String('abc'); s.setTime = new Date().setTime; s.setTime(5); eval(s)", "5"},
    // A method of texts that is called on another object leaves that object alone.
    {"var o = {c: ''.charAt, x: 5}, k = 'c'; o[k](0) + o.x", "[5"},
    {"var o = {c: ''.charAt, x: 5}; o.c(0) + o.x", "[5"},
    {"var s = 'abc', k = 'charAt', t = ''; for (var i = 0; i < 9; i++) t += s[k](i); t", "abc"},
};

const Row methods[] = {
    {"'abc'.charAt(0)", "a"},
    {"'abc'.charAt()", "a"},
    {"'abc'.charAt('1')", "b"},
    {"'abc'.charAt(1.9)", "b"},
    {"'a7'.charAt(1) + 1", "71"},
    {"'abc'.charAt(3) + 'abc'.charAt(-1) + 'abc'.charAt(1 / 0)", ""},
    {"'abc'.charCodeAt(2)", "99"},
    {"'abc'.charCodeAt()", "97"},
    {"'\\u20ac'.charCodeAt(0)", "8364"},
    {"'abc'.charCodeAt(3)", "NaN"},
    {"'abc'.charCodeAt(-1)", "NaN"},
    {"'a'.concat()", "a"},
    {"'a'.concat('b', 3, null)", "ab3null"},
    {"'banana'.indexOf('a')", "1"},
    {"'banana'.indexOf('a', 2)", "3"},
    {"'banana'.indexOf('b', -5)", "0"},
    {"'banana'.indexOf('A')", "-1"},
    {"'banana'.indexOf('a', 99)", "-1"},
    {"'banana'.indexOf('')", "0"},
    {"'banana'.indexOf('', 6)", "6"},
    {"'a undefined'.indexOf()", "2"},
    {"'banana'.lastIndexOf('a')", "5"},
    {"'banana'.lastIndexOf('a', 4)", "3"},
    {"'banana'.lastIndexOf('x')", "-1"},
    {"'banana'.lastIndexOf('b', 0)", "0"},
    {"('a'.localeCompare('b') < 0) + '' + ('b'.localeCompare('a') > 0) + 'a'.localeCompare('a')", "truetrue0"},
    {"'abc'.match('b')", "undefined"},
    {"'aXbX'.replace('X', '-')", "a-b-"},
    {"'aXbX'.replace('x', '-')", "aXbX"},
    {"'a.b'.replace('.', '$&')", "a$&b"},
    {"'ab'.replace('', '-')", "-a-b-"},
    {"'aundefined'.replace()", "aundefined"},
    {"'abc'.search('c')", "2"},
    {"'abc'.search('x')", "-1"},
    {"'hello'.slice(1, -1)", "ell"},
    {"'hello'.slice(-3)", "llo"},
    {"'hello'.slice()", "hello"},
    {"'hello'.slice(3, 1)", ""},
    {"'hello'.slice(-99, 99)", "hello"},
    {"'hello'.slice(NaN, 2)", "he"},
    {"'a b'.split(' ')", "a,b"},
    {"'a,b,,c'.split(',').length", "4"},
    {"'abc'.split('x')", "abc"},
    {"''.split(',').length", "1"},
    {"'abc'.split('')", ",a,b,c,"},
    {"'a-b-c'.split('-', 2)", "a,b,c"},
    {"'a--b'.split('--')", "a,b"},
    {"'aundefinedb'.split()", "a,b"},
    {"'hello'.substring(1, 3)", "el"},
    {"'hello'.substring(4, 1)", "ell"},
    {"'hello'.substring(2)", "llo"},
    {"'hello'.substring(-5, 2)", "he"},
    {"'hello'.substring(NaN)", "hello"},
    {"'hello'.substring(9)", ""},
    {"'aB\\u00e9'.toLowerCase() + 'aB\\u00e9'.toLocaleLowerCase()", "ab\u00e9ab\u00e9"},
    {"'aB\\u00e9'.toUpperCase() + 'aB\\u00e9'.toLocaleUpperCase()", "AB\u00c9AB\u00c9"},
    {"'\\u00df'.toUpperCase()", "SS"},
    {"' a  b '.trim()", "a b"},
    {"'\\t\\n'.trim().length", "0"},
    {"String.fromCharCode(72, 105)", "Hi"},
    {"String.fromCharCode().length", "0"},
    {"String.fromCharCode(0).length", "1"},
    {"var o = {c: ''.charAt, toString: function () { return 'xyz' }}; o.c(1)", "y"},
    {"var n = new Number(12345); n.s = ''.slice; n.s(1, 3)", "23"},
};

// Texts are joined lazily; every order of joining has to read the same.
const Row joining[] = {
    {"var s = ''; for (var i = 0; i < 3000; i++) s = i % 10 + s + i % 10; s.length + s.charAt(0) + s.charAt(3000) + s.substring(2998, 3002)", "6000901001"},
    {"var a = 'x'; for (var i = 0; i < 40; i++) a += 'yz'; var b = a + '1', c = a + '2'; (b == c) + b.charAt(81) + c.charAt(81) + (b.substring(0, 81) == a)", "false12true"},
    {"var a = 'x'; for (var i = 0; i < 100; i++) a += 'y'; var b = a; a += '1'; b += '2'; a.charAt(101) + b.charAt(101) + a.length", "12102"},
    {"var a = 'x'; for (var i = 0; i < 12; i++) a += a; a.length + '' + (a == a + '') + (a + 'q').charAt(4096)", "4096trueq"},
    {"var a = 'ab', o = {}; for (var i = 0; i < 6; i++) a += a; o[a + 'c'] = 7; o[a + 'c'] + typeof o[a + 'd']", "7undefined"},
    {"var a = ''; for (var i = 0; i < 50; i++) a = 'p' + a + 's'; a.indexOf('s') + a.lastIndexOf('p')", "99"},
    {"var a = 'k'; for (var i = 0; i < 99; i++) a += i; a < a + '0'", "true"},
    {"'' + '' + 'a' + '' == 'a'", "true"},
};

const Row limits[] = {
    {"var s = 'x'; while (true) s += s", "RangeError: string too long"},
    {"var s = 'aaaaaaaaaaaaaaaa'; for (var i = 0; i < 20; i++) s += s; s.replace('a', 'aaaaaaaaa')", "RangeError: string too long"},
    {"var s = 'aaaaaaaaaaaaaaaa'; for (var i = 0; i < 21; i++) s += s; [s, s, s, s].join('')", "RangeError: string too long"},
    {"var s = 'aaaaaaaaaaaaaaaa'; for (var i = 0; i < 22; i++) s += s; 'b'.concat(s)", "RangeError: string too long"},
};
// clang-format on

TEST(Strings, Wrappers) {
    script_test::expectValues(wrappers);
}

TEST(Strings, Methods) {
    script_test::expectValues(methods);
}

TEST(Strings, JoinInAnyOrder) {
    script_test::expectValues(joining);
}

TEST(Strings, HaveALimit) {
    script_test::expectValues(limits);
}

TEST(Strings, EqualTextsAreOneAtom) {
    script::ESContext context;
    script::initContext(context);
    const script::ESResult first = context.evaluate(QString(), QStringLiteral("'ab' + 'cd' + 1"));
    const script::ESResult second = context.evaluate(QString(), QStringLiteral("'abc' + 'd1'"));
    ASSERT_TRUE(first.value.isAtom());
    EXPECT_EQ(first.value.asAtom(), second.value.asAtom());
    EXPECT_EQ(script::atomForIndex(7), script::internAtom(u"7"));
    EXPECT_EQ(script::atomForIndex(70707), script::internAtom(u"70707"));
    EXPECT_EQ(script::findAtomForIndex(70707), script::atomForIndex(70707));
    EXPECT_EQ(script::findAtomForIndex(4009004), nullptr);
}

}  // namespace
