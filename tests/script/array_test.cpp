// Arrays: their lengths, elements and methods.
#include "script/native_array.h"
#include "script/script_fixture.h"

namespace {

using script_test::outcome;
using script_test::Row;

// clang-format off
const Row literals[] = {
    {"[].length", "0"},
    {"[1,].length", "2"},
    {"[,].length", "2"},
    {"[, ,].length", "3"},
    {"[1, , 3].length", "3"},
    {"[1, , 3].hasOwnProperty('1')", "false"},
    {"[1, undefined].hasOwnProperty('1')", "true"},
    {"[[1, 2], [3]][0][1]", "2"},
    {"new Array().length", "0"},
    {"new Array(3).length", "3"},
    {"new Array(3).hasOwnProperty(0)", "false"},
    {"new Array('3').length", "1"},
    {"new Array(3, 4)", "3,4"},
    {"Array(2).length + Array('7').length + Array().length", "3"},
    {"new Array(4294967295).length", "4294967295"},
    {"new Array(1.5)", "RangeError: bad length in array constructor"},
    {"new Array(-1)", "RangeError: bad length in array constructor"},
    {"new Array(4294967296)", "RangeError: bad length in array constructor"},
    {"Array(NaN)", "RangeError: bad length in array constructor"},
    {"Array.length + '|' + [].constructor.length", "0|0"},
};

const Row lengths[] = {
    {"var a = []; a[5] = 1; a.length", "6"},
    {"var a = []; a['7'] = 1; a.length", "8"},
    {"var a = [1, 2]; a['x'] = 3; a.length", "2"},
    {"var a = []; a['01'] = 1; a['1.0'] = 2; a[-1] = 3; a[1.5] = 4; a.length", "0"},
    {"var a = []; a[2147483646] = 1; a.length", "2147483647"},
    {"var a = []; a[2147483647] = 1; a.length + '|' + a[2147483647]", "0|1"},
    {"var a = []; a[4294967295] = 1; a.length + '|' + a[4294967295]", "0|1"},
    {"var a = [1, 2, 3]; a.length = 1; a.length + '|' + a", "1|1"},
    {"var a = [1, 2, 3]; a.length = 1; a[2]", "3"},
    {"var a = [1, 2, 3]; a.length = '2'; a.length", "2"},
    {"var a = [1, 2, 3]; a.length = 5; a.length + '|' + a.hasOwnProperty(4)", "5|false"},
    {"var a = [1]; a.length = -1; a.length", "4294967295"},
    {"var a = [1]; a.length = 2.7; a.length", "2"},
    // Elements beyond a length that was cut are still there, and a store into one raises the length again.
    {"var a = [1, 2]; a.length = 0; a.push(9); a.length + '|' + a", "1|9"},
    {"var a = [1, 2]; a.length = 0; a[0] = 9; a.length + '|' + a", "1|9"},
    {"var a = [1, 2, 3], i = 2; a.length = 1; a[i] = 7; a.length + '|' + a", "3|1,2,7"},
    {"var a = [1, 2, 3], i = 1; a.length = 1; a[i] += 5; a.length + '|' + a", "2|1,7"},
    {"var a = [1, 2, 3], i = 1; a.length = 0; a[i]++; a.length + '|' + a", "2|1,3"},
    {"var a = [3, 2, 1]; a.length = 2; a.sort() + '|' + a[2]", "2,3|1"},
    {"var a = [1, 2, 3]; a.length = 2; a.reverse() + '|' + a[2]", "2,1|3"},
    {"var a = [1, 2, 3]; a.length = 1; a.concat(4)", "1,4"},
    {"var a = [1, 2, 3]; a.length = 1; a.pop() + '|' + a.length + '|' + a[1]", "1|0|2"},
    {"var a = [1, 2], t = ''; a.length = 1; for (var i in a) if (!isNaN(i)) t += i; t", "01"},
    {"var a = [1, 2]; delete a.length; a.length + '|' + a.push(5) + '|' + a.length + '|' + a", "undefined|1|1|5"},
    {"var a = [1, 2]; delete a.length; a[1] = 6; a.length + '|' + a", "2|1,6"},
    {"var a = [1, 2]; delete a[1]; a.length + '|' + a[1]", "2|undefined"},
    {"var a = [1, 2]; delete a[1]; delete a[0]; a[1] = 3; a.length + '|' + a.hasOwnProperty(0)", "2|false"},
    {"var a = [1]; for (var k in a) if (k == 'length') 'listed'; [].propertyIsEnumerable('length')", "false"},
};

const Row sparse[] = {
    {"var a = []; a[3000] = 'far'; for (var i = 0; i < 4000; i++) if (i != 3000) a[i] = i; a[3000] + a[2999] + a.length", "far29994000"},
    {"var a = []; a[1e9] = 'far'; a[0] = 1; a[1] = 2; a[1e9] + a[0] + a[1] + a.length", "far121000000001"},
    {"var a = []; a[5000] = 1; a['5000'] = 2; a[5000] + a.length", "5003"},
    {"var a = []; a[5000] = 1; for (var i = 4999; i >= 0; i--) a[i] = 1; var s = 0; for (i in a) if (!isNaN(i)) s += a[i]; s", "5001"},
    {"var a = []; a[5000] = 'x'; for (var i = 0; i < 5000; i++) a.push; a.length = 3; a[5000] + a.length", "x3"},
    {"Array.prototype[1] = 'p'; var a = [5, , 6]; a[1] + '|' + a.hasOwnProperty(1) + '|' + a", "p|false|5,p,6"},
    {"Array.prototype[70000] = 'p'; var a = [], i = 70000; a[i]", "p"},
    {"Object.prototype['70001'] = 'q'; var a = [1], i = 70001; a[i]", "q"},
};

const Row methods[] = {
    {"[1, , 3].join()", "1,3"},
    {"[1, null, 3].join()", "1,3"},
    {"[1, 2].join('-')", "1-2"},
    {"[1, 2].join('')", "12"},
    {"[1, 2].join(undefined)", "1,2"},
    {"[1, 2].join(null)", "1null2"},
    {"[].join()", ""},
    {"[undefined, 1].join('-')", "1"},
    {"[1, , 3].toString()", "1,undefined,3"},
    {"[1, null, 3].toString()", "1,,3"},
    {"[1, , 3].toLocaleString()", "1,undefined,3"},
    {"[[1, [2]], 3].toString()", "1,2,3"},
    {"var o = {t: [].toString}; o.t()", "TypeError: Array.prototype.toString requires an array"},
    {"var o = {t: [].toLocaleString}; o.t()", "TypeError: Array.prototype.toString requires an array"},
    {"[1, 2].concat([undefined, 3])", "1,2,3"},
    {"[1, 2].concat([undefined, 3]).length", "3"},
    {"[1].concat(undefined).length", "2"},
    {"[1].concat(2, [3, [4, 5]]).length", "4"},
    {"[].concat().length", "0"},
    {"var o = {concat: [].concat, length: 2}; o.concat(1).length", "2"},
    {"var a = [1]; a.concat(2); a", "1"},
    {"[1, 2, 3].pop()", "3"},
    {"var a = [1, 2]; a.pop(); a.length + '|' + a.hasOwnProperty(1)", "1|false"},
    {"[].pop()", "undefined"},
    {"var o = {pop: [].pop}; o.pop() + '|' + o.length", "undefined|0"},
    {"var o = {pop: [].pop, length: 1, 0: 'z'}; o.pop() + '|' + o.length + '|' + o[0]", "z|0|undefined"},
    {"var a = [1]; a.push(2, 3) + '|' + a", "3|1,2,3"},
    {"var a = [1]; a.push() + '|' + a", "1|1"},
    {"var o = {push: [].push}; o.push('a', 'b') + '|' + o.length + '|' + o[1]", "2|2|b"},
    {"var a = []; for (var i = 0; i < 3000; i++) a.push(i); while (a.length > 1) a.pop(); a.push('x'); a", "0,x"},
    {"[1, 2, 3].reverse()", "3,2,1"},
    {"[1, 2, 3, 4].reverse()", "4,3,2,1"},
    {"[].reverse().length", "0"},
    {"var a = [1]; a.reverse() == a", "true"},
    {"var a = [1, , 3, 4].reverse(); a.hasOwnProperty('1') + '|' + a.hasOwnProperty('2')", "true|false"},
    {"var a = [1, , undefined, 4].reverse(); a.hasOwnProperty('1') + '|' + a.hasOwnProperty('2')", "false|false"},
    {"var o = {length: 2, 0: 'a', 1: 'b', reverse: [].reverse}; o.reverse(); o[0] + o[1]", "ba"},
    {"[1, 2, 3].shift()", "1"},
    {"var a = [1, , 3]; a.shift(); a.length + '|' + a.hasOwnProperty(0) + '|' + a[1] + '|' + a.hasOwnProperty(2)", "2|false|3|false"},
    {"[].shift()", "undefined"},
    {"var o = {shift: [].shift}; o.shift() + '|' + o.length", "undefined|0"},
    {"[1, 2, 3, 4].slice(1, 3)", "2,3"},
    {"[1, 2, 3].slice(1)", "2,3"},
    {"[1, 2, 3].slice()", "1,2,3"},
    {"[1, 2, 3].slice(-2)", "2,3"},
    {"[1, 2, 3].slice(-9, -1)", "1,2"},
    {"[1, 2, 3].slice(2, 1).length", "0"},
    {"[1, 2, 3].slice(5).length", "0"},
    {"[1, 2, 3].slice(0, undefined)", "1,2,3"},
    {"[1, 2, 3].slice('1', '2')", "2"},
    {"[1, 2, 3].slice(0, null).length", "0"},
    {"[1, , 3].slice(1).hasOwnProperty('0')", "false"},
    {"[1, 2, ,].slice(1).length", "1"},
    {"var o = {length: 2, 0: 'a', 1: 'b', slice: [].slice}; o.slice(1)", "b"},
};

const Row sorting[] = {
    {"[].sort().length", "0"},
    {"[1].sort()", "1"},
    {"[2, 1].sort()", "1,2"},
    {"[3, 20, 100, 1].sort()", "1,100,20,3"},
    {"[3, 20, 100, 1].sort(undefined)", "1,100,20,3"},
    {"[3, 20, 100, 1].sort(function (a, b) { return a - b })", "1,3,20,100"},
    {"[3, 20, 100, 1].sort(function (a, b) { return '' + (a - b) })", "1,3,20,100"},
    {"['b', 'B', 'a', 'A', ''].sort()", ",A,B,a,b"},
    {"['b', undefined, 'a'].sort()", "a,b,undefined"},
    {"['b', undefined, 'a'].sort().hasOwnProperty(2)", "false"},
    {"[2, , 1].sort().hasOwnProperty(2)", "false"},
    {"[null, 'm', 'o'].sort()", "m,,o"},
    {"[true, 5, 'a', -1].sort()", "-1,5,a,true"},
    {"var a = [2, 1]; a.sort() == a", "true"},
    {"var a = [2, 1], t; a.sort(function () { t = this }); t == a", "true"},
    {"var n = 0; [2, undefined, 1].sort(function (a, b) { if (a == undefined || b == undefined) n++; return a - b }); n", "0"},
    {"[3, 1, 2].sort(function () {})", "3,1,2"},
    {"[3, 1, 2].sort(function () { return NaN })", "3,1,2"},
    {"[3, 1, 2].sort(function () { return {valueOf: function () { return 0 }} })", "3,1,2"},
    {"[3, 1, 2].sort(function () { return null.x })", "TypeError: can't convert null to an object"},
    {"[].sort(5)", "Error: Array.prototype.sort argument is not a function"},
    {"[].sort(null)", "Error: Array.prototype.sort argument is not a function"},
    {"[].sort({})", "Error: Array.prototype.sort argument is not a function"},
    {"var o = {length: 3, 0: 'c', 1: 'a', 2: 'b', sort: [].sort}; o.sort(); o[0] + o[1] + o[2]", "abc"},
    {"var o = {toString: function () { return 'b' }}; ['c', o, 'a'].sort()", "a,b,c"},
    {"var a = []; for (var i = 0; i < 500; i++) a[i] = (i * 7919) % 500; a.sort(function (x, y) { return x - y }); for (i = 0; i < 500; i++) if (a[i] != i) break; i", "500"},
    {"var a = []; for (var i = 0; i < 300; i++) a[i] = 'k' + (1000 + (i * 7919) % 300); a.sort(); for (i = 1; i < 300; i++) if (a[i - 1] > a[i]) break; i", "300"},
    {"var a = []; for (var i = 0; i < 300; i++) a[i] = (i * 7919) % 300; a.sort(); for (i = 1; i < 300; i++) if ('' + a[i - 1] > '' + a[i]) break; i", "300"},
    // Functions that lie or change the array: any order, and nothing worse.
    {"[5, 4, 3, 2, 1].sort(function () { return 1 }).length", "5"},
    {"var a = [5, 4, 3, 2, 1]; a.sort(function () { a.length = 0; a[9] = 1; return -1 }); 'safe'", "safe"},
    {"var a = [5, 4, 3, 2, 1]; a.sort(function () { delete a.length; for (var i = 0; i < 5; i++) delete a[i]; return 1 }); 'safe'", "safe"},
    {"var a = [5, 4, 3, 2, 1]; a.sort(function () { for (var i = 0; i < 500; i++) a.push(i); a.reverse(); return 1 }); 'safe'", "safe"},
    {"var a = [3, 2, 1]; a.sort(function (x, y) { return [y, x].sort()[0] - x }); a.length", "3"},
};
// clang-format on

TEST(Arrays, Literals) {
    script_test::expectValues(literals);
}

TEST(Arrays, Lengths) {
    script_test::expectValues(lengths);
}

TEST(Arrays, SparseOnesAndPrototypes) {
    script_test::expectValues(sparse);
}

TEST(Arrays, Methods) {
    script_test::expectValues(methods);
}

TEST(Arrays, Sorting) {
    script_test::expectValues(sorting);
}

TEST(Arrays, WalksHaveALimit) {
    for (const char* method : {"sort", "reverse", "shift", "slice", "join", "toString", "concat"}) {
        const std::string source = "var a = []; a.length = 4294967295; a." + std::string(method) + "()";
        EXPECT_EQ(outcome(source), "RangeError: array too long") << method;
    }
}

TEST(Arrays, ElementsAndGapsCostNoAtoms) {
    script::ESContext context;
    script::initContext(context);
    outcome(context, "var a = [], i, n = 100000; function id(x) { return x }");
    const std::uint32_t before = script::atomCount();
    EXPECT_EQ(
        outcome(context, "for (i = 0; i < n; i++) a[i] = i; for (i = 0; i < n; i++) id(a[i]); a.length"),
        "100000");
    EXPECT_EQ(
        outcome(context, "for (i = 0; i < 1000; i++) a.pop(); a.reverse(); a.shift(); a.slice(5).length"),
        "98994");
    EXPECT_EQ(outcome(context, "a.length = 0; for (i = 0; i < n; i++) a.push(i); delete a[i - 1]; a.length"),
              "100000");
    EXPECT_EQ(
        outcome(context, "a = []; a.length = n; for (i = 0; i < n; i++) id(a[i]); a.reverse(); a.pop()"),
        "undefined");
    EXPECT_LT(script::atomCount() - before, 100U);
}

TEST(Arrays, AHostsClassIsToldOfElementsThatALengthCutsOff) {
    class ToldClass : public script::ESNativeArray {
    public:
        bool removeElement(script::ESContext&, script::ESObject*, const script::ESAtom* name) override {
            told += name->text.toStdString() + " ";
            return true;
        }
        std::string told;
    };
    script::ESContext context;
    script::initContext(context);
    ToldClass told;
    script::ESObject* list = context.newArray(0, nullptr);
    list->cls = &told;
    context.defineProperty(context.global, 0, script::internAtom(u"list"), script::ESValue(list));
    outcome(context, "list[0] = list[1] = list[2] = list[3] = 1; list.length = 2");
    EXPECT_EQ(told.told, "2 3 ");
}

}  // namespace
