#pragma once

namespace script {

/// Whether the calling thread has enough native stack left for another level of recursion.
bool hasNativeStack();

}  // namespace script
