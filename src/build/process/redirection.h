#pragma once

#include "build/process/descriptor.h"

#include <span>
#include <string>
#include <vector>

namespace build {

/// A file that takes the place of one or both of a child's streams.
struct Redirection {
    std::string file;
    bool output;
    bool errors;
    bool append;
};

/// What a list of arguments becomes once its redirection operators are taken out.
struct RedirectedCommand {
    std::span<const std::string> arguments;
    std::vector<Redirection> redirections;
};

/// Cuts the list off at the first of ">", "1>", ">>", "1>>", "2>", "2>>", "&>", "&>>". What stands there is
/// read as pairs of operator and file name; what is no such pair is dropped.
RedirectedCommand splitRedirections(std::span<const std::string> arguments);

/// The files that take the place of a child's streams; empty where a stream is not redirected. Both may be
/// the same file.
struct RedirectedStreams {
    Descriptor output;
    Descriptor errors;
};

/// Opens the files, relative ones from the working directory when one is given. The first file of a stream
/// that can be opened wins; "&>" counts only as long as neither stream is redirected.
RedirectedStreams openRedirections(const RedirectedCommand& command, const std::string& workingDirectory);

}  // namespace build
