#include "cli/image_command.h"

#include "cli/output.h"
#include "loadfiles/format.h"
#include "loadfiles/image.h"
#include "support/hexception.h"

#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

namespace cli {

namespace {

using loadfiles::AddressRange;
using loadfiles::Format;
using loadfiles::LoadFileInterface;
using support::HException;

constexpr std::uint64_t addressSpace = std::uint64_t{1} << 32;
constexpr std::uint64_t largestBinary = std::uint64_t{1} << 30;

struct ImageOptions {
    std::string first;   ///< FILE, IN or A
    std::string second;  ///< OUT or B
    std::string from;
    std::string to;
    std::uint32_t address = 0;
    std::uint32_t fill = 0xFF;
    std::optional<std::uint32_t> entry;
};

/// `0x` and eight lower-case digits, more where the number needs them.
std::string number(std::uint64_t value) {
    std::array<char, 24> text;
    std::snprintf(text.data(), text.size(), "0x%08llx", static_cast<unsigned long long>(value));
    return text.data();
}

/// The format named by `option`, else that of the file's extension. Without either the words are wrong.
Format formatOf(const std::string& word, const std::string& file, const char* option) {
    if (!word.empty()) return *loadfiles::formatOfWord(word);
    if (const std::optional<Format> format = loadfiles::formatOfPath(file)) return *format;
    throw CLI::ValidationError("no format goes with the name \"" + file + "\": name one with " + option);
}

std::unique_ptr<LoadFileInterface> read(Format format, const std::string& file, const ImageOptions& options) {
    auto image = loadfiles::readLoadFile(format, file == "-" ? "/dev/stdin" : file);
    image->setLoadAddress(options.address);
    return image;
}

int info(const ImageOptions& options, Format format) {
    const auto image = read(format, options.first, options);
    Output output;
    for (const auto& section : image->sections()) {
        output << number(section->address()) << " " << number(section->size());
        if (*section->name() != '\0') output << " " << section->name();
        output << "\n";
    }
    if (image->hasEntryPoint()) output << "entry " << number(image->entryPoint()) << "\n";
    return output.finish() ? 0 : 1;
}

[[noreturn]] void failToWrite(const std::string& path) {
    throw HException("cannot write " + path);
}

/// A file that is written in part is worse than none.
void removePartOf(const std::string& path) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) std::filesystem::remove(path, ignored);
}

void writeBinary(LoadFileInterface& image, std::uint8_t fill, const std::string& path) {
    const AddressRange gap = loadfiles::largestGap(image.sections());
    if (gap.size() > 0 && loadfiles::extentOf(image.sections()).size() > largestBinary)
        throw HException("the gap from " + number(gap.start) + " to " + number(gap.end) +
                         " makes a binary of more than 1 GiB");
    image.makeContiguous(fill);
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) failToWrite(path);
    bool isGood = true;
    for (const auto& section : image.sections())
        isGood = std::fwrite(section->data(false), 1, section->size(), file) == section->size();
    isGood = std::fclose(file) == 0 && isGood;
    if (isGood) return;
    removePartOf(path);
    failToWrite(path);
}

void writeText(LoadFileInterface& image, Format format, const std::string& path) {
    const auto buffer = loadfiles::makeCodeBuffer(format, path);
    if (!buffer->flush()) failToWrite(path);
    for (const auto& section : image.sections()) {
        buffer->setAddress(section->address());
        buffer->putBytes(section->bytes());
    }
    buffer->finish(image.hasEntryPoint() ? image.entryPoint() : 0);
    if (buffer->flush()) return;
    removePartOf(path);
    failToWrite(path);
}

/// Says so when the output has no place for the entry point that the user asked for, or not for all of it.
void warnOfEntry(const LoadFileInterface& image, Format format, bool isAskedFor) {
    if (!image.hasEntryPoint()) return;
    if (format == Format::SRecord && image.entryPoint() > 0xFFFF)
        reportWarning("only the low 16 bits of the entry point " + number(image.entryPoint()) +
                      " are written");
    else if (format != Format::SRecord && isAskedFor)
        reportWarning("the entry point " + number(image.entryPoint()) + " is not written: only srec has one");
}

int convert(const ImageOptions& options, Format from, Format to) {
    const auto image = read(from, options.first, options);
    if (options.entry) image->setEntryPoint(*options.entry);
    for (const auto& section : image->sections())
        if (section->end() > addressSpace)
            throw HException("the section at " + number(section->address()) + " runs past 4 GiB");
    warnOfEntry(*image, to, options.entry.has_value());
    const std::string out = options.second == "-" ? "/dev/stdout" : options.second;
    if (to == Format::Binary)
        writeBinary(*image, static_cast<std::uint8_t>(options.fill), out);
    else
        writeText(*image, to, out);
    return 0;
}

int compare(const ImageOptions& options, Format firstFormat, Format secondFormat) {
    const auto first = read(firstFormat, options.first, options);
    const auto second = read(secondFormat, options.second, options);
    Output output;
    bool isEqual = true;
    compareImages(first->sections(), second->sections(),
                  [&](loadfiles::Difference difference, AddressRange range) {
                      isEqual = false;
                      if (difference == loadfiles::Difference::OnlyInFirst) output << "< ";
                      if (difference == loadfiles::Difference::OnlyInSecond) output << "> ";
                      output << number(range.start) << " " << number(range.size()) << "\n";
                  });
    return output.finish() && isEqual ? 0 : 1;
}

using OneFile = int (*)(const ImageOptions& options, Format format);
using TwoFiles = int (*)(const ImageOptions& options, Format first, Format second);

template <class Run>
int reportingFailures(const Run& run) {
    try {
        return run();
    } catch (const HException& fault) {
        reportError(fault.message());
        return 1;
    }
}

void addFile(CLI::App& command, const char* name, std::string& file, const char* meaning) {
    command.add_option(name, file, meaning)->type_name("")->required();
}

void addFormat(CLI::App& command, const char* option, std::string& word, const std::string& file) {
    command
        .add_option(
            option, word,
            "The format of " + file + ": bin, srec, hex, lst or txt; by default its extension decides")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"bin", "srec", "hex", "lst", "txt"}).description(""));
}

void addAddress(CLI::App& command, ImageOptions& options) {
    command.add_option("--address", options.address, "Places a raw binary at address A; 0 by default")
        ->type_name("A");
}

void runOnOne(CLI::App& command, OneFile run, const std::shared_ptr<ImageOptions>& options, int& exitStatus) {
    command.callback([run, options, &exitStatus] {
        const Format format = formatOf(options->from, options->first, "--from");
        exitStatus = reportingFailures([&] { return run(*options, format); });
    });
}

void runOnTwo(CLI::App& command, TwoFiles run, const std::shared_ptr<ImageOptions>& options,
              int& exitStatus) {
    command.callback([run, options, &exitStatus] {
        const Format first = formatOf(options->from, options->first, "--from");
        const Format second = formatOf(options->to, options->second, "--to");
        exitStatus = reportingFailures([&] { return run(*options, first, second); });
    });
}

void addInfo(CLI::App& image, int& exitStatus) {
    const auto options = std::make_shared<ImageOptions>();
    CLI::App* command = image.add_subcommand("info", "Lists the sections of a load file and its entry point");
    addFile(*command, "FILE", options->first, "The load file; - means standard input");
    addFormat(*command, "--from", options->from, "FILE");
    addAddress(*command, *options);
    runOnOne(*command, info, options, exitStatus);
}

void addConvert(CLI::App& image, int& exitStatus) {
    const auto options = std::make_shared<ImageOptions>();
    CLI::App* command = image.add_subcommand("convert", "Writes a load file in another format");
    addFile(*command, "IN", options->first, "The file to read; - means standard input");
    addFile(*command, "OUT", options->second, "The file to write; - means standard output");
    addFormat(*command, "--from", options->from, "IN");
    addFormat(*command, "--to", options->to, "OUT");
    addAddress(*command, *options);
    command->add_option("--fill", options->fill, "Fills gaps when OUT is a raw binary; 0xFF by default")
        ->type_name("BYTE")
        ->check(CLI::Range(0, 0xFF).description(""));
    command->add_option("--entry", options->entry, "Sets the entry point")->type_name("A");
    runOnTwo(*command, convert, options, exitStatus);
}

void addCompare(CLI::App& image, int& exitStatus) {
    const auto options = std::make_shared<ImageOptions>();
    CLI::App* command = image.add_subcommand("compare", "Prints the ranges in which two load files differ");
    addFile(*command, "A", options->first, "A load file; - means standard input");
    addFile(*command, "B", options->second, "The load file to compare it with");
    addFormat(*command, "--from", options->from, "A");
    addFormat(*command, "--to", options->to, "B");
    addAddress(*command, *options);
    runOnTwo(*command, compare, options, exitStatus);
}

}  // namespace

void addImageCommand(CLI::App& app, int& exitStatus) {
    CLI::App* image = app.add_subcommand("image", "Shows, converts and compares load files");
    image->require_subcommand(1);
    addInfo(*image, exitStatus);
    addConvert(*image, exitStatus);
    addCompare(*image, exitStatus);
}

}  // namespace cli
