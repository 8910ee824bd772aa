#include "script/forth/forth_source.h"

#include "script/forth/forth_exception.h"

namespace script {

StringSource::StringSource(std::string_view oneLine) {
    if (oneLine.size() > longestLine) throw ForthException(ForthStringOverflow);
    text = oneLine;
}

}  // namespace script
