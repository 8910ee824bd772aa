// Compiles any text as a program. Code that the generator writes is proved balanced as it is made.
#include "script/context.h"
#include "script/native_error.h"
#include "script/parser.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString source =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    script::ESContext context;
    script::initContext(context);
    script::ESParser parser(context);
    parser.setSource(source);
    try {
        parser.compileProgram();
    } catch (const script::ESException&) {  // NOLINT(bugprone-empty-catch): a SyntaxError is a good answer
    } catch (const script::ESFatalError& fault) {
        if (fault.message != QStringLiteral("compiler error: patch constant too large")) __builtin_trap();
    }
    return 0;
}
