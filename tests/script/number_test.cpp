// Booleans, numbers, mathematics and dates.
#include "script/script_fixture.h"

namespace {

using script_test::Row;

// clang-format off
const Row booleans[] = {
    {"Boolean() + '|' + Boolean('') + '|' + Boolean('0')", "false|false|true"},
    {"typeof Boolean(1) + typeof new Boolean", "booleanobject"},
    {"new Boolean(false) ? 1 : 2", "1"},
    {"new Boolean('x').toString()", "true"},
    {"new Boolean(0).valueOf()", "false"},
    {"true.toString() + false.valueOf()", "truefalse"},
    {"'' + Boolean.prototype", "false"},
    {"Boolean.prototype.length", "1"},
    {"var o = {t: true.toString}; o.t()", "TypeError: Boolean.prototype.toString called on non-Boolean object"},
    {"var o = {t: true.valueOf}; o.t()", "TypeError: Boolean.prototype.toString called on non-Boolean object"},
};

const Row numbers[] = {
    {"Number() + '|' + Number('0x1F') + '|' + Number(null)", "NaN|31|0"},
    {"typeof Number('1') + typeof new Number(1)", "numberobject"},
    {"new Number + ''", "NaN"},
    {"Number.prototype + 0", "0"},
    {"Number.MAX_VALUE * 2", "Infinity"},
    {"Number.MAX_VALUE", "1.79769e+308"},
    {"(Number.MIN_VALUE > 0) + '|' + Number.MIN_VALUE / 2", "true|0"},
    {"Number.NaN + '|' + Number.NEGATIVE_INFINITY + '|' + Number.POSITIVE_INFINITY", "NaN|-Infinity|Infinity"},
    {"Number.MAX_VALUE = 5; delete Number.MAX_VALUE; Number.MAX_VALUE > 5", "true"},
    {"var t = ''; for (var k in Number) t += k + ' '; t.indexOf('VALUE')", "-1"},
    {"(2).toFixed()", "2"},
    {"(2.5).toFixed(0) + '|' + (1.005).toFixed(2) + '|' + (0.1).toFixed(20)", "2|1.00|0.10000000000000000555"},
    {"new Number(5).toFixed(2)", "5.00"},
    {"(-1.55).toFixed(1)", "-1.6"},
    {"(1e21).toFixed(2)", "1000000000000000000000.00"},
    {"(1e300).toFixed(20).length", "322"},
    {"(1 / 0).toFixed(1) + (NaN).toFixed(1)", "infnan"},
    {"(5).toFixed('3')", "5.000"},
    {"(5).toFixed(2.9)", "5.00"},
    {"(5).toFixed(21)", "RangeError: fraction digits should 0 through 20"},
    {"(5).toFixed(-1)", "RangeError: fraction digits should 0 through 20"},
    {"var s = new String('2.5'); s.f = (1).toFixed; s.f(2)", "2.50"},
    {"var o = {t: (1).toString}; o.t()", "TypeError: Number.prototype.toString called on non-Number object"},
    {"var o = {t: (1).valueOf}; o.t()", "TypeError: Number.prototype.valueOf called on non-Number object"},
};

const Row mathematics[] = {
    {"Math.abs(-3) + Math.abs('-2')", "5"},
    {"1 / Math.abs(-0)", "Infinity"},
    {"Math.acos(2) + '|' + Math.acos(1)", "NaN|0"},
    {"Math.asin(1) == Math.PI / 2", "true"},
    {"Math.atan(1) == Math.PI / 4", "true"},
    {"Math.atan2(1, -1) == 3 * Math.PI / 4", "true"},
    {"Math.atan2(0, -1) == Math.PI", "true"},
    {"Math.ceil(1.2) + '|' + Math.ceil(-1.2) + '|' + 1 / Math.ceil(-0.5)", "2|-1|-Infinity"},
    {"Math.cos(0) + Math.sin(0) + Math.tan(0)", "1"},
    {"Math.exp(1) == Math.E", "true"},
    {"Math.floor(1.8) + '|' + Math.floor(-1.2)", "1|-2"},
    {"Math.log(Math.E) + '|' + Math.log(0) + '|' + Math.log(-1)", "1|-Infinity|NaN"},
    {"Math.max() + '|' + Math.min()", "-Infinity|Infinity"},
    {"Math.max(1, 3, 2) + '|' + Math.min(2, '1', 3)", "3|1"},
    {"Math.max(1, NaN, 3) + '|' + Math.min(1, 'x', 2)", "NaN|NaN"},
    {"1 / Math.max(-0, 0) + '|' + 1 / Math.max(0, -0)", "Infinity|Infinity"},
    {"1 / Math.min(0, -0) + '|' + 1 / Math.min(-0, 0)", "-Infinity|-Infinity"},
    {"var n = 0, o = {valueOf: function () { n++; return 1 }}; Math.max(o, NaN, o); n", "1"},
    {"Math.pow(2, 10) + '|' + Math.pow(2, -1) + '|' + Math.pow(0, 0) + '|' + Math.pow(-8, 1 / 3)", "1024|0.5|1|NaN"},
    {"for (var i = 0, ok = 0; i < 1000; i++) { var r = Math.random(); if (r >= 0 && r < 1) ok++ } ok", "1000"},
    {"Math.round(2.5) + '|' + Math.round(-2.5) + '|' + Math.round(1.4999)", "3|-2|1"},
    {"1 / Math.round(-0.4) + '|' + 1 / Math.round(-0.5) + '|' + 1 / Math.round(-0) + '|' + 1 / Math.round(0)", "-Infinity|-Infinity|-Infinity|Infinity"},
    {"Math.round(-0.51) + '|' + Math.round(1 / 0) + '|' + Math.round(NaN)", "-1|Infinity|NaN"},
    {"Math.sqrt(16) + '|' + Math.sqrt(-1)", "4|NaN"},
    {"Math.abs() + '|' + Math.pow(2)", "NaN|NaN"},
    {"Math.LN2 + '|' + Math.LN10 + '|' + Math.LOG2E + '|' + Math.LOG10E", "0.693147|2.30259|1.4427|0.434294"},
    {"(Math.LOG2E == 1 / Math.LN2) + '' + (Math.LOG10E == 1 / Math.LN10)", "truetrue"},
    {"Math.SQRT2 + '|' + Math.SQRT1_2 + '|' + Math.PI + '|' + Math.E", "1.41421|0.707107|3.14159|2.71828"},
    {"Math.PI = 3; Math.PI > 3", "true"},
    {"var t = ''; for (var k in Math) if (k == 'abs' || k == 'PI') t += k; t", "abs"},
    {"new Math", "TypeError: new must be given a constructor object"},
    {"Math()", "TypeError: not a function object"},
    {"new Math.abs", "TypeError: new must be given a constructor object"},
};

#define DAY "var d = new Date(0); d.setFullYear(2024, 2, 15); d.setHours(13, 14, 15, 16); "
#define ALL "; d.getFullYear() + '-' + d.getMonth() + '-' + d.getDate() + ' ' + d.getHours() + ':' + d.getMinutes() + ':' + d.getSeconds() + '.' + d.getMilliseconds()"

const Row dates[] = {
    {"new Date(2020, 1, 1).valueOf()", "0"},
    {"new Date(2020, 1, 1).getFullYear()", "-4713"},
    {"new Date().getFullYear() > 2000", "true"},
    {"typeof Date.prototype.length + Date.prototype.length", "number7"},
    {"Date()", "Error: bad signature in builtin call"},
    {"var d = new Date(0); d.setFullYear(1970, 0, 1); d.valueOf() / 86400000", "2440588"},
    {DAY ALL, "2024-2-15 13:14:15.16"},
    {DAY "d.getUTCFullYear() + '-' + d.getUTCMonth() + '-' + d.getUTCDate() + ' ' + d.getUTCHours() + ':' + d.getUTCMinutes() + ':' + d.getUTCSeconds() + '.' + d.getUTCMilliseconds()", "2024-2-15 13:14:15.16"},
    {DAY "d.getDay() + '|' + d.getUTCDay()", "5|5"},
    {DAY "d.setDate(17); d.getDay()", "7"},
    {DAY "d.setMonth(0)" ALL, "2024-0-15 13:14:15.16"},
    {DAY "d.setMonth(1, 29)" ALL, "2024-1-29 13:14:15.16"},
    {DAY "d.setFullYear(2023)" ALL, "2023-2-15 13:14:15.16"},
    {DAY "d.setUTCFullYear(2000, 1)" ALL, "2000-1-15 13:14:15.16"},
    {DAY "d.setDate(31)" ALL, "2024-2-31 13:14:15.16"},
    {DAY "d.setUTCDate(1); d.setUTCMonth(11, 31)" ALL, "2024-11-31 13:14:15.16"},
    {DAY "d.setDate(32)", "NaN"},
    {DAY "d.setDate(0)", "NaN"},
    {DAY "d.setMonth(12)", "NaN"},
    {DAY "d.setMonth()", "NaN"},
    {DAY "d.setFullYear(1 / 0)", "NaN"},
    {DAY "d.setFullYear(2023, 1, 29); d.getTime()", "NaN"},
    {DAY "d.setHours(1)" ALL, "2024-2-15 1:14:15.16"},
    {DAY "d.setHours(1, 2)" ALL, "2024-2-15 1:2:15.16"},
    {DAY "d.setUTCHours(1, 2, 3, 4)" ALL, "2024-2-15 1:2:3.4"},
    {DAY "d.setMinutes(5)" ALL, "2024-2-15 13:5:15.16"},
    {DAY "d.setMinutes(5, 6, 7)" ALL, "2024-2-15 13:5:6.7"},
    {DAY "d.setUTCMinutes(5, 6)" ALL, "2024-2-15 13:5:6.16"},
    {DAY "d.setSeconds(7.9)" ALL, "2024-2-15 13:14:7.16"},
    {DAY "d.setUTCSeconds(7, 8)" ALL, "2024-2-15 13:14:7.8"},
    {DAY "d.setMilliseconds('9')" ALL, "2024-2-15 13:14:15.9"},
    {DAY "d.setUTCMilliseconds(1000)" ALL, "2024-2-15 13:14:16.0"},
    {DAY "d.setMinutes(60)" ALL, "2024-2-15 14:0:15.16"},
    {DAY "d.setHours(25)" ALL, "2024-2-16 1:14:15.16"},
    {DAY "d.setHours(-1)" ALL, "2024-2-14 23:14:15.16"},
    {DAY "d.setHours()", "NaN"},
    {DAY "d.setHours('x') + '|' + d.getHours() + '|' + d.getFullYear() + '|' + d", "NaN|NaN|NaN|"},
    {DAY "d.setHours(1) == d.valueOf()", "true"},
    {DAY "d.toString() + '|' + d.toLocaleString() + '|' + d.toUTCString()", "Fri Mar 15 13:14:15 2024|Fri Mar 15 13:14:15 2024|Fri Mar 15 13:14:15 2024"},
    {DAY "d.toDateString() + '|' + d.toLocaleDateString()", "Fri Mar 15 2024|Fri Mar 15 2024"},
    {DAY "d.toTimeString() + '|' + d.toLocaleTimeString()", "13:14:15|13:14:15"},
    {DAY "var t = d.getTime(); d.setMilliseconds(17); d.getTime() - t", "1"},
    {"var d = new Date(0); d.setTime(8.64e15) + '|' + d.setTime(8.64e15 + 1000)", "8640000000000000|NaN"},
    {"var d = new Date(0); d.setTime('5') + d.getMilliseconds()", "10"},
    {"var d = new Date(0); d.setTime() + '|' + d.getTimezoneOffset()", "NaN|0"},
    {"var d = new Date(0); d.setTime(-1); d.getHours() + ':' + d.getMilliseconds()", "23:999"},
    {"var o = {s: new Date().setTime, z: new Date().getTimezoneOffset}; o.s(5) + o.z()", "5"},
    {"Date.prototype.getDate()", "TypeError: Date object required"},
    {"var o = {t: new Date().toUTCString}; o.t()", "TypeError: Date object required"},
    {"var o = {t: new Date().setUTCFullYear}; o.t(1)", "TypeError: Date object required"},
};
// clang-format on

TEST(Library, Booleans) {
    script_test::expectValues(booleans);
}

TEST(Library, Numbers) {
    script_test::expectValues(numbers);
}

TEST(Library, Mathematics) {
    script_test::expectValues(mathematics);
}

TEST(Library, Dates) {
    script_test::expectValues(dates);
}

}  // namespace
