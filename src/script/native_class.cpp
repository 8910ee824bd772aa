#include "script/native_class.h"

#include "script/context.h"

#include <QByteArray>

namespace script {

void ESNativeClass::call(ESContext& context, ESObject*, ESObject*, std::uint32_t, ESValue*) {
    context.throwGeneralError(QStringLiteral("bad signature in builtin call"));
}

ESObject* ESNativeClass::construct(ESContext& context, ESObject*, std::uint32_t, ESValue*) {
    context.throwGeneralError(QStringLiteral("bad signature in builtin construct"));
}

void ESNativeClass::installMethods(ESContext& context, ESObject* holder, const char* prefix,
                                   std::span<const MethodRow> rows) {
    for (const MethodRow& row : rows) {
        const QByteArray fullName = QByteArray(prefix) + (*prefix != '\0' ? "." : "") + row.name;
        context.installBuiltin(holder, {row.name, fullName.constData(), row.arity, row.id},
                               context.functionPrototype, this);
    }
}

ESObject* ESNativeClass::installClassConstructor(ESContext& context, ESObject* prototype,
                                                 std::uint32_t arity) {
    const QByteArray text = name().toUtf8();
    return context.installConstructor({text.constData(), text.constData(), arity, 0, true}, prototype, this);
}

}  // namespace script
