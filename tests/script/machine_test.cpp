// The byte code that scripts compile to, and the limits of the machine that runs it.
#include "script/opcodes.h"
#include "script/parser.h"
#include "script/script_fixture.h"
#include "script/threads_host.h"

#include <set>
#include <thread>

namespace {

using script_test::outcome;
using script_test::repeated;

std::string listing(const script::ESCode& code) {
    QString text;
    for (std::size_t offset = 0; offset < code.bytes.size();) {
        QString line = script::listInstruction(code, offset, &offset).mid(7);
        text += (text.isEmpty() ? QString() : QStringLiteral("; ")) +
                line.replace(QLatin1Char('\t'), QLatin1Char(' '));
    }
    return text.toStdString();
}

/// The program, and behind it the functions that it made, inner ones first.
std::string compiled(const char* source) {
    script::ESContext context;
    script::initContext(context);
    script::ESParser parser(context);
    const QString text = QString::fromUtf8(source);
    parser.setSource(text);
    const auto program = parser.compileProgram();
    std::string result = listing(*program);
    for (const std::uint32_t function : program->functions)
        result += " / " + listing(context.codeTemplate(function));
    return result;
}

// The global object has its own properties first; scripts' names count from there.
struct CodeRow {
    const char* source;
    const char* code;
};

// clang-format off
const CodeRow codes[] = {
    {"1; 7", "NUM 1; RET"},
    {"-1", "NUM_1; NEG; RET"},
    {"function f(a) { var l = a; for (var i = 0; i < 4; i++) l += i; return l }",
     "CLOSURE 0; PUTG @; UNDEFINED; RET / GETA 0; PUTL 0; NUM_0; PUTL 1; J 001a; GETL 0; GETL 1; ADD; PUTL 0; INCL 1; GETL 1; NUM_4; JLT 000d; GETL 0; RET; RETU"},
    {"function f() { for (;;) { break; } }", "CLOSURE 0; PUTG @; UNDEFINED; RET / J 0006; J 0009; J 0003; RETU"},
    {"function f(o) { o.a++; o[o] = o.b(1); return f(2)[3] }",
     "CLOSURE 0; PUTG @; UNDEFINED; RET / GETA 0; STR a; POSTINCP; DROP; NUM_1; GETA 0; CALLF b 1; GETA 0; GETA 0; PUTX; NUM_2; CALLG @ 1; GETF 3; RET; RETU"},
    {"function f(p) { var v; (function () { p = v }) ; v++ }",
     "CLOSURE 0; PUTG @; UNDEFINED; RET / INCLM 0; RETU"},
    {"function f(x) { switch (x) { case 1: return } }",
     "CLOSURE 0; PUTG @; UNDEFINED; RET / GETA 0; DUP; NUM_1; IDENTITY; JT_DROP 000d; DROP; J 000e; RETU; RETU"},
    {"function f() { with (1) g++; eval(2) }", "CLOSURE 0; PUTG @; UNDEFINED; RET / UNDEFINED; PUTLM 0; NUM_1; WITH; STR g; POSTINCX; DROP; ENDWITH; NUM_2; CALLG @ 1; DROP; RETU"},
    {"[1,,2]", "NUM_1; GAP; NUM_2; MKARRAY 3; RET"},
    {"(function () {})()", "CLOSURE 0; CALLV 0; RET / RETU"},
    {"delete this.a; new this; new this(1); !this.f()",
     "THIS; STR a; DELETEX; DROP; THIS; NEW; DROP; NUM_1; THIS; NEWA 1; DROP; THIS; CALLF f 0; LOGNOT; RET"},
};
// clang-format on

/// Global slots move with the library, so their numbers are left open.
std::string withoutGlobalSlots(std::string code) {
    for (const char* op : {"PUTG ", "CALLG ", "GETG "}) {
        for (std::size_t place = code.find(op); place != std::string::npos;
             place = code.find(op, place + 1)) {
            const std::size_t digits = place + std::string(op).size();
            code.replace(digits, code.find_first_not_of("0123456789", digits) - digits, "@");
        }
    }
    return code;
}

std::string withHexTargets(std::string code) {
    for (const char* op : {"J ", "JLT ", "JT_DROP "}) {
        for (std::size_t place = code.find(op); place != std::string::npos;
             place = code.find(op, place + 1)) {
            const std::size_t digits = place + std::string(op).size();
            const std::size_t end = code.find_first_not_of("0123456789", digits);
            const auto target = QString::number(std::stoi(code.substr(digits, end - digits)), 16);
            code.replace(digits, end - digits, target.rightJustified(4, QLatin1Char('0')).toStdString());
        }
    }
    return code;
}

TEST(Machine, ScriptsCompileToTheirCode) {
    for (const CodeRow& row : codes)
        EXPECT_EQ(withHexTargets(withoutGlobalSlots(compiled(row.source))), row.code) << row.source;
}

TEST(Machine, OpcodesHaveTheirNumbersAndNames) {
    std::set<std::string> names;
    for (const script::OpRow& row : script::opRows()) EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_EQ(script::opRows().size(), 114U);  // 0 to 115 without 73 and 79
    EXPECT_EQ(script::findOpRow(73), nullptr);
    EXPECT_EQ(script::findOpRow(79), nullptr);
    EXPECT_STREQ(script::findOpRow(109)->name, "RETU");
}

TEST(Machine, UnbalancedCodeIsFound) {
    script::ESCode code;
    code.bytes = {static_cast<std::uint8_t>(script::Op::Drop), static_cast<std::uint8_t>(script::Op::RetU)};
    EXPECT_THROW(script::measureStack(code), script::ESFatalError);
}

TEST(Machine, CallsNestDeeplyAndThenFail) {
    EXPECT_EQ(outcome("function f(n) { return n ? 1 + f(n - 1) : 0 } f(20000)"), "20000");
    EXPECT_EQ(outcome("function f() { return 1 + f() } f()"), "fatal: virtual machine stack too small");
    EXPECT_EQ(outcome("function f() { return new f } f()"), "fatal: virtual machine stack too small");
    EXPECT_EQ(outcome("var o = {toString: function () { return '' + o }}; '' + o"),
              "fatal: virtual machine stack too small");
    EXPECT_EQ(outcome("var a = []; a[0] = a; '' + a"), "fatal: virtual machine stack too small");
    EXPECT_EQ(outcome("function f() { [2, 1].sort(f) } f()"), "fatal: virtual machine stack too small");
    EXPECT_EQ(outcome("var s = 'eval(s)'; function g() { return eval(s) } s = 'g()'; g()"),
              "fatal: virtual machine stack too small");
}

TEST(Machine, DeepSourceIsReadOnlyWhereTheNativeStackHasRoom) {
    const std::string deep = "var n = 0, d = '" + repeated("(", 790) + "1" + repeated(")", 790) + "', l = '" +
                             repeated("function(){return ", 260) + "1" + repeated("}", 260) + "';";
    for (const char* source :
         {"function f() { if (++n % 10 == 0) eval(d); eval('f()') } f()",
          "var o = {toString: function () { if (++n % 10 == 0) eval('x=' + l); return '' + o }}; '' + o",
          "function f() { [2, 1].sort(function () { if (++n % 10 == 0) eval(d); f() }) } f()"})
        EXPECT_EQ(outcome(deep + source), "fatal: virtual machine stack too small") << source;
}

TEST(Machine, AContextGoesOnAfterErrors) {
    script::ESContext context;
    script::initContext(context);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(outcome(context, "function f() { return 1 + f() } f()"),
                  "fatal: virtual machine stack too small");
        EXPECT_EQ(outcome(context, "function g(a) { with (a) null.x() } g({})"),
                  "TypeError: can't convert null to an object");
        EXPECT_EQ(context.scope(), nullptr);
        EXPECT_EQ(context.thisObject(), context.global);
        EXPECT_EQ(outcome(context, "var kept = (typeof kept == 'number' ? kept : 0) + 1; kept"),
                  std::to_string(i + 1));
    }
}

TEST(Machine, MemoryHasALimit) {
    script::ESContext context;
    script::initContext(context);
    context.arena().setLimit(context.arena().used() + (std::size_t{8} << 20));
    EXPECT_EQ(outcome(context, "var a = []; while (true) a[a.length] = {}"),
              "fatal: virtual machine memory too small");
    EXPECT_EQ(outcome(context, "1 + 1"), "2");
}

TEST(Machine, ManyNamesDoNotWearOutAContext) {
    script::ESContext context;
    script::initContext(context);
    EXPECT_EQ(outcome(context, "var o = {}; for (var i = 0; i < 100000; i++) o['name' + i] = i; o.name99999"),
              "99999");
    EXPECT_GT(script::atomCount(), 100000U);
    EXPECT_EQ(outcome(context, "var fresh = {neverSeenBefore: 4}; fresh.neverSeenBefore + o.name5"), "9");
}

TEST(Machine, TheHostIsAskedAfterEveryInstruction) {
    struct Counter : script::ESContext {
        bool checkInterrupt() override { return ++asked <= allowed; }
        int asked = 0;
        int allowed = 1000000;
    };
    Counter context;
    script::initContext(context);
    EXPECT_EQ(outcome(context, "var a = 1; a + a"), "2");
    EXPECT_EQ(context.asked, 6);  // once before, and behind NUM_1, PUTG, GETG, GETG and ADD
    context.asked = 0;
    context.allowed = 500;
    EXPECT_EQ(context.evaluate(QString(), QStringLiteral("while (1) {}")).status, script::ESResult::Normal);
    EXPECT_EQ(context.asked, 501);
    context.asked = 0;
    EXPECT_EQ(
        context.evaluate(QString(), QStringLiteral("var a = []; a.length = 16000000; a.reverse()")).status,
        script::ESResult::Normal);
}

TEST(Machine, TheViewsBudgetEndsAScriptQuietly) {
    script::ThreadsWindowESContext context;
    script::initContext(context);
    EXPECT_EQ(context.evaluate(QString(), QStringLiteral("while (1) {}")).status, script::ESResult::Normal);
    EXPECT_EQ(context.instructionCount, 1000000U);
}

TEST(Machine, ReadOnlyAndDeletedProperties) {
    script::ESContext context;
    script::initContext(context);
    const script::ESAtom* name = script::internAtom(u"fixed");
    context.defineProperty(context.global, script::ReadOnly | script::DontDelete, name, script::ESValue(5.0));
    EXPECT_EQ(
        outcome(context, "this.fixed = 6; this.fixed + '|' + delete this.fixed + '|' + delete this.nothing"),
        "5|false|true");
    const std::uint32_t slots = context.global->properties.size();
    EXPECT_EQ(outcome(context, "this.gone = 1; delete this.gone; typeof this.gone"), "undefined");
    EXPECT_EQ(context.global->properties[slots].name, nullptr);
}

}  // namespace
