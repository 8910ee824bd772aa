#include "build/process/redirection.h"

#include <fcntl.h>

#include <algorithm>
#include <string_view>

namespace build {

namespace {

struct Operator {
    std::string_view sign;
    bool output;
    bool errors;
    bool append;
};

constexpr Operator operators[] = {
    {">", true, false, false},  {"1>", true, false, false}, {">>", true, false, true},
    {"1>>", true, false, true}, {"2>", false, true, false}, {"2>>", false, true, true},
    {"&>", true, true, false},  {"&>>", true, true, true},
};

const Operator* findOperator(std::string_view sign) {
    const auto* row = std::find_if(std::begin(operators), std::end(operators),
                                   [sign](const Operator& candidate) { return candidate.sign == sign; });
    return row == std::end(operators) ? nullptr : row;
}

std::string inDirectory(const std::string& directory, const std::string& name) {
    return directory.empty() || name.starts_with('/') ? name : directory + "/" + name;
}

}  // namespace

RedirectedCommand splitRedirections(std::span<const std::string> arguments) {
    const auto first = std::find_if(arguments.begin(), arguments.end(),
                                    [](const std::string& argument) { return findOperator(argument); });
    const auto count = static_cast<std::size_t>(first - arguments.begin());
    RedirectedCommand command{arguments.first(count), {}};
    for (std::size_t i = count; i + 1 < arguments.size(); i += 2)
        if (const Operator* row = findOperator(arguments[i]))
            command.redirections.push_back({arguments[i + 1], row->output, row->errors, row->append});
    return command;
}

RedirectedStreams openRedirections(const RedirectedCommand& command, const std::string& workingDirectory) {
    RedirectedStreams streams;
    for (const Redirection& each : command.redirections) {
        if ((each.output && streams.output) || (each.errors && streams.errors)) continue;
        Descriptor file = openForWriting(inDirectory(workingDirectory, each.file), each.append);
        if (each.output && each.errors && file)
            streams.errors = Descriptor(::fcntl(file.number(), F_DUPFD_CLOEXEC, 0));
        (each.output ? streams.output : streams.errors) = std::move(file);
    }
    return streams;
}

}  // namespace build
