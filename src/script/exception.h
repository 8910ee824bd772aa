#pragma once

#include "script/value.h"

#include <QString>

namespace script {

/// A script's error on its way to the host: an error object made by `ESContext::throwError`, or any value.
/// The value belongs to the context that raised it.
struct ESException {
    ESValue value;
};

/// A fault of the engine itself, or a script that outgrew the machine (value stack, memory, code size).
/// `ESContext::evaluate` lets it pass to the host.
struct ESFatalError {
    QString message;
};

}  // namespace script
