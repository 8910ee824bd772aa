#pragma once

#include "properties/build_kind.h"
#include "properties/property_members.h"

namespace project {

/// The property with the command by which an externally built project compiles a file of that kind; null for
/// kinds that compile nothing.
const properties::PropertyClass* externalCompileCommand(const properties::ToolProperties& tools,
                                                        properties::BuildKind kind);

}  // namespace project
