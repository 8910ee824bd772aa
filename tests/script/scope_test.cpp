// Where names live: functions, closures, `with`, `eval`, and the global object.
#include "script/script_fixture.h"

namespace {

using script_test::Row;

// clang-format off
const Row functions[] = {
    {"function f(a, b) { return typeof b } f(1)", "undefined"},
    {"function f(a, b) { var l = 5; return a + b + l } f(1, 2, 3)", "8"},
    {"function f(a, a) { return a } f(1, 2)", "2"},
    {"function f(a, a) { return a } f(1)", "undefined"},
    {"function f(a, a) { return function () { return a } } f(1, 2)()", "2"},
    {"function f(a) { a = 5; return a } f(1)", "5"},
    {"function f(a) { var a; return a } f(1)", "1"},
    {"function f(a) { var a = 2; return a } f(1)", "2"},
    {"function f() { return g(); function g() { return 6 } } f()", "6"},
    {"function f() { var g = 1; function g() {} return typeof g } f()", "number"},
    {"function f() { return 1 } function f() { return 2 } f()", "2"},
    {"function f() { x9 = 1 } f(); x9", "1"},
    {"function f() { var x = 1 } var x = 2; f(); x", "2"},
    {"function f() { return x; var x = 1 } var x = 2; f()", "undefined"},
    {"function f() {} f()", "undefined"},
    {"function f() { return } f()", "undefined"},
    {"function f() { return\n 5 } f()", "undefined"},
    {"function f() { return /* no line */ 5 } f()", "5"},
    {"function f() { arguments = 3; return arguments } f()", "3"},
    {"function f() { return arguments } f(1)", "undefined"},
    {"function f(arguments) { return arguments } f(1)", "undefined"},
    {"f.length + '|' + isNaN.length; function f(a, b) {}", "2|1"},
    {"var a = function b() { return 1 }; a == b", "true"},
    {"var f = function g(n) { return n ? n * g(n - 1) : 1 }; f(5)", "120"},
    {"function f() { var h = function g() { return typeof g }; return h() } f() + typeof g", "functionundefined"},
    {"(function (a, b) { return a + b })(2, 3)", "5"},
    {"var g = this; (function () { return this == g })()", "true"},
    {"function f() { return function () { return 6 } } f()()", "6"},
    {"[function () { return this.length }][0]()", "1"},
    {"function f() { return this.q } var o = {q: 4, f: f}; o.f() + '|' + o['f']()", "4|4"},
    {"function f() { this.v = 1 } f(); v", "1"},
    {"function f() { return this } typeof f() + (f() == this)", "objecttrue"},
    {"isNaN.prototype", "undefined"},
    {"function f() {} f.prototype.constructor == f", "true"},
    {"var t = ''; function f(a) {} for (var k in f) t += k == 'length' || k == 'prototype'; t.indexOf('true')", "-1"},
    {"function f(n) { return n < 2 ? n : f(n - 1) + f(n - 2) } f(15)", "610"},
    {"function even(n) { return n ? odd(n - 1) : true } function odd(n) { return n ? even(n - 1) : false } even(501)", "false"},
};

const Row closures[] = {
    {"function c() { var n = 0; return function () { return ++n } } var a = c(), b = c(); a(); a(); a() + '|' + b()", "3|1"},
    {"function f() { var v = '1'; function inc() { v++; v++; return v } return inc } f()()", "3"},
    {"function f(p) { return {up: function () { p++ }, down: function () { --p }, get: function () { return p }} } var o = f(5); o.up(); o.up(); o.down(); o.get()", "6"},
    {"function f(a, b) { var l = 5; return function () { return a + b + l++ + l } } f(1, 2, 3)()", "14"},
    {"function f() { var l = 5; return function () { return l } } f(1, 2, 3)()", "5"},
    {"function f(a) { return function (b) { return function (c) { return a + b + c } } } f('x')('y')('z')", "xyz"},
    {"function f() { var fs = []; for (var i = 0; i < 3; i++) fs[i] = function () { return i }; return fs[0]() + fs[2]() } f()", "6"},
    {"function f() { var x = 1; function g() { var x = 2; return h(); function h() { return x } } return g() + x } f()", "3"},
    {"function f(n) { var self = n; if (n) f(n - 1); return (function () { return self })() } f(3)", "3"},
    {"function f() { var g = function () { return v }; var v = 7; return g() } f()", "7"},
    {"function f(x) { x.y = function () { return x.z }; return x } f({z: 8}).y()", "8"},
    {"function f() { function g() { u = 1 } var u; g(); return u } f() + typeof u", "1undefined"},
    {"function f() { var t = 0; for (var k in {zz: 1}) { if (k == 'zz') t++; (function () { return t })() } return t } f()", "1"},
    {"function f(c) { var l = 1; return c ? function () { return l } : l } f(0) + f(1)()", "2"},
    {"function f(a, b, c, d, e, g, h, i, j) { return function () { return a + j } } f(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)()", "10"},
};

const Row constructors[] = {
    {"function F() { this.a = 1 } new F().a", "1"},
    {"var n = 0; function F() { n++ } new F; new F(); n", "2"},
    {"function F() { return {k: 1} } new F().k", "1"},
    {"function F() { this.k = 2; return 5 } new F().k", "2"},
    {"function F() { this.k = 2; return null } new F().k", "2"},
    {"function F() {} F.prototype.x = 9; new F().x", "9"},
    {"function F() {} F.prototype = {x: 3}; var f = new F; f.x + '|' + (f.constructor == Object)", "3|true"},
    {"function F() {} F.prototype = 3; '' + new F", "[object Object]"},
    {"function F() {} var a = new F; F.prototype.late = 1; a.late", "1"},
    {"function F() {} F.prototype.n = 1; var a = new F, b = new F; a.n = 5; b.n + a.n", "6"},
    {"function A() {} A.prototype.n = 1; function B() {} B.prototype = new A; new B().n", "1"},
    {"var a = {b: function (n) { this.d = n }}; new a.b(7).d", "7"},
    {"var a = {b: {c: function (n) { this.d = n }}}; new a.b['c'](7).d", "7"},
    {"function f() { return function () { this.v = 3 } } new (f())().v", "3"},
    {"function F(n) { this.n = n; this.G = function (m) { this.m = m } } new new F(1).G(4).m", "4"},
    {"function F(n) { this.n = n } new F(2).n + new F(3).n", "5"},
    {"function F(n) { this.n = n } typeof new F().n", "undefined"},
    {"new Date().constructor == Date", "true"},
    {"new 5", "TypeError: new must be given a constructor object"},
    {"new isNaN", "TypeError: new must be given a constructor object"},
    {"new undefined(1)", "TypeError: new must be given a constructor object"},
    {"new Math.max(1)", "TypeError: new must be given a constructor object"},
    {"new (function () {}.toString)", "TypeError: new must be given a constructor object"},
};

const Row withs[] = {
    {"var o = {v: 1}; with (o) { v = 2; var w = v } o.v + '|' + w", "2|2"},
    {"var o = {}; with (o) made = 1; typeof o.made + made", "undefined1"},
    {"var o = {v: 1}; with (o) v += 4; o.v", "5"},
    {"var o = {n: '3'}, r; with (o) { r = n++ + '|' + ++n + '|' + n-- + '|' + --n } r", "3|5|5|3"},
    {"var o = {q: 5, f: function () { return this.q }}, r; with (o) r = f(); r", "5"},
    {"var o = {a: {b: 1}}, r; with (o) with (a) r = b; r", "1"},
    {"var r, x = 'g'; with ({x: 'o'}) with ({}) r = x; r + x", "og"},
    {"function P() {} P.prototype.p = 1; var r, o = new P; with (o) { p = 2; r = p } r + '|' + P.prototype.p", "2|1"},
    {"var r; with ('text') r = length; r", "4"},
    {"var r; with (5) r = toFixed(1); r", "5.0"},
    {"var o = {d: 1}; with (o) { delete d } typeof o.d", "undefined"},
    {"var o = {}, r; with (o) { r = delete nothing } r", "false"},
    {"var o = {x: 5}, f; with (o) f = function () { return x }; o.x = 6; f()", "6"},
    {"var o = {x: 5}, f; with (o) f = function () { x = 7; return function () { return x } }; f()() + o.x", "14"},
    {"function f(p) { var l = 2; with ({m: 3}) { p++; l += m; return p + l } } f(1)", "7"},
    {"function f(p) { with (p) { return q } } f({q: 4}) + typeof q", "4undefined"},
    {"var x = 'g'; function f() { for (;;) with ({x: 1}) break; return x } f()", "g"},
    {"var x = 'g', t = ''; for (var i = 0; i < 2; i++) { with ({x: i}) { t += x; continue } } t + x", "01g"},
    {"var x = 'g', t = ''; l: for (var i = 0; i < 2; i++) for (;;) with ({x: i}) with ({y: 1}) { t += x; continue l } t + x", "01g"},
    {"var x = 'g'; function f() { with ({x: 1}) return x } f() + x", "1g"},
    {"var x = 'g'; l: with ({x: 1}) { break l } x", "g"},
    {"var x = 'g'; l: with ({x: 1}) { with ({x: 2}) { if (x) break l } x = 'lost' } x", "g"},
    {"var x = 'g'; with ({x: 1}) switch (x) { case 1: break } x", "g"},
    {"var o = {k: 0}, t = ''; with (o) for (k in {aa: 1}) if (k == 'aa') t += k; t", "aa"},
};

const Row evaluations[] = {
    {"eval('1 + 1')", "2"},
    {"eval(5) + typeof eval()", "5undefined"},
    {"eval('1 +')", "undefined"},
    {"eval('null.x')", "undefined"},
    {"eval(new String('4 + 1')) + eval(new Number(2)) + typeof eval({})", "7object"},
    {"eval('var made = 3'); made", "3"},
    {"function f() { eval('var e = 3'); return typeof arguments } f() + e", "undefined3"},
    {"function f() { var hidden = 1; return eval('typeof hidden') } f()", "undefined"},
    {"var o = {q: 5, f: function () { return eval('this.q') }}; o.f()", "5"},
    {"eval('function g() { return 8 }'); g()", "8"},
    {"var f = eval('function h() { return 9 } h'); f()", "9"},
    {"eval('eval(\"1 + 2\")')", "3"},
    {"Function('a', 'b', 'return a * b')(6, 7)", "42"},
    {"new Function('a, b', 'return a - b').length", "2"},
    {"typeof Function()()", "undefined"},
    {"typeof Function('')()", "undefined"},
    {"Function('return this')() == this", "true"},
    {"function f() { var l = 1; return Function('return typeof l') } f()()", "undefined"},
    {"var F = new Function('n', 'this.n = n'); new F(4).n", "4"},
    {"Function('a', 'return function () { return a++ + a }')(2)()", "5"},
    {"Function('return eval(\"1\")')()", "1"},
    {"Function('a b', '')", "SyntaxError: expected end of input found an identifier"},
    {"Function('a', ')')", "SyntaxError: expected an expression, found )"},
    {"Function('1', '')", "SyntaxError: expected an identifier found a number"},
    {"'' + Function('') + isNaN", "<<function>><<function>>"},
    {"Function.prototype.length + '|' + Function.prototype() + '|' + Function.length", "0|undefined|1"},
};

const Row globals[] = {
    {"undeclared", "undefined"},
    {"this.g = 1; g", "1"},
    {"var g = 1; this.g", "1"},
    {"g = 1; this['g']", "1"},
    {"var g = 1; (delete g) + '|' + g", "false|1"},
    {"var g = 1; (delete this.g) + '|' + g", "false|1"},
    {"this.g = 1; (delete this.g) + '|' + typeof this.g", "true|undefined"},
    {"g = 1; delete this.g; g = 2; g", "2"},
    {"var t = ''; for (var k in this) if (k == 'NaN' || k == 'Math' || k == 'isNaN' || k == 't') t += k; t", "isNaN"},
    {"var q = later, t = ''; for (var k in this) if (k == 'later') t += k; t", "later"},
    {"NaN = 5; NaN", "5"},
    {"toString()", "TypeError: not a function object"},
    {"this.hasOwnProperty('isNaN') + '' + this.hasOwnProperty('nothing')", "truefalse"},
    {"var isNaN = 3; isNaN", "3"},
};
// clang-format on

TEST(Scope, Functions) {
    script_test::expectValues(functions);
}

TEST(Scope, Closures) {
    script_test::expectValues(closures);
}

TEST(Scope, Constructors) {
    script_test::expectValues(constructors);
}

TEST(Scope, Withs) {
    script_test::expectValues(withs);
}

TEST(Scope, Evaluations) {
    script_test::expectValues(evaluations);
}

TEST(Scope, Globals) {
    script_test::expectValues(globals);
}

}  // namespace
