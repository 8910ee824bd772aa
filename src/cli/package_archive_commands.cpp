// atelis package list, create, extract, cat
#include "cli/output.h"
#include "cli/package_command.h"
#include "cli/save_archive.h"
#include "package/package_archive.h"
#include "package/target.h"
#include "support/hexception.h"

#include <QString>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace cli {

namespace {

namespace fs = std::filesystem;
using package::Compression;
using package::PackageArchive;
using package::PackageArchiveFile;
using support::HException;

struct ArchiveOptions {
    std::string archive;
    std::vector<std::string> names;
    std::string directory = ".";
    int version = 0;  ///< 0 leaves it to the compression
    std::string compression = "zlib";
    int level = -1;
    bool overwrite = false;
};

QString text(const std::string& bytes) {
    return QString::fromStdString(bytes);
}

// --- list, cat ---

int list(const ArchiveOptions& options) {
    const PackageArchive archive(text(options.archive));
    Output output;
    for (const auto& file : archive.files()) {
        std::array<char, 32> numbers;
        std::snprintf(numbers.data(), numbers.size(), "%04o %u ", file->mode() & 07777, file->size());
        output << numbers.data() << file->modified().toString(Qt::ISODate).toStdString() << " "
               << printable(file->name().toStdString()) << "\n";
    }
    return output.finish() ? 0 : 1;
}

PackageArchiveFile* entry(const PackageArchive& archive, const std::string& name) {
    PackageArchiveFile* const file = archive.fileNamed(text(name));
    if (file == nullptr) throw HException("no file \"" + name + '"');
    return file;
}

int cat(const ArchiveOptions& options) {
    PackageArchive archive(text(options.archive));
    package::Contents contents(archive.contents(entry(archive, options.names[0])));
    Output output;
    for (; !contents.isAtEnd(); contents.advance())
        output << std::string_view(contents.piece().data(),
                                   static_cast<std::size_t>(contents.piece().size()));
    return output.finish() ? 0 : 1;
}

// --- extract ---

/// All entries, or those named, in table order.
std::vector<const PackageArchiveFile*> chosenEntries(const PackageArchive& archive,
                                                     const std::vector<std::string>& names) {
    std::set<const PackageArchiveFile*> named;
    for (const std::string& name : names) named.insert(entry(archive, name));
    std::vector<const PackageArchiveFile*> chosen;
    for (const auto& file : archive.files())
        if (names.empty() || named.contains(file.get())) chosen.push_back(file.get());
    return chosen;
}

int extract(const ArchiveOptions& options) {
    PackageArchive archive(text(options.archive));
    archive.extractAll(chosenEntries(archive, options.names), text(options.directory), options.overwrite);
    return 0;
}

// --- create ---

/// Whether a name still means the same to whoever extracts it.
bool isStorable(const QString& name) {
    try {
        return package::pathBelow(name) == name;
    } catch (const HException&) {
        return false;
    }
}

/// Collects the files to store, directories with all below them.
class Collector {
public:
    Collector(PackageArchive& archive, const ArchiveOptions& options)
        : archive_(archive), directory_(options.directory), output_(options.archive) {}

    void add(const std::string& name) {
        const fs::path relative = fs::path(name).lexically_normal();
        const fs::path path = relative == "." ? directory_ : directory_ / relative;
        const bool climbs = !relative.empty() && *relative.begin() == "..";
        if (relative.is_absolute() || climbs) throw HException(name + " lies outside the directory");
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) return addBelow(path);
        if (isOutput(path)) throw HException(path.string() + " is the archive itself");
        addFile(path, relative.string());
    }

private:
    void addBelow(const fs::path& directory) {
        for (const fs::path& path : filesBelow(directory)) {
            if (isOutput(path)) continue;
            std::error_code ignored;
            if (fs::is_regular_file(path, ignored))
                addFile(path, path.lexically_relative(directory_).lexically_normal().string());
            else
                reportWarning("skipped " + path.string() + ", which is no file");
        }
    }

    /// In order.
    static std::vector<fs::path> filesBelow(const fs::path& directory) {
        std::vector<fs::path> files;
        std::error_code fault;
        fs::recursive_directory_iterator found(directory, fault);
        for (; !fault && found != fs::recursive_directory_iterator(); found.increment(fault)) {
            std::error_code ignored;
            if (!fs::is_directory(found->symlink_status(ignored))) files.push_back(found->path());
        }
        if (fault) throw HException("cannot read " + directory.string() + ": " + fault.message());
        std::sort(files.begin(), files.end());
        return files;
    }

    bool isOutput(const fs::path& path) const {
        std::error_code ignored;
        return fs::equivalent(path, output_, ignored);
    }

    void addFile(const fs::path& path, const std::string& name) {
        const QString stored = text(name);
        if (!isStorable(stored)) throw HException("cannot store the name " + name);
        archive_.addDiskFile(text(path.string()), stored);
    }

    PackageArchive& archive_;
    fs::path directory_;
    fs::path output_;
};

void setForm(PackageArchive& archive, const ArchiveOptions& options) {
    const bool isBzip2 = options.compression == "bzip2";
    const int version = options.version != 0 ? options.version : isBzip2 ? 2 : 1;
    if (isBzip2 && version == 1) throw CLI::ValidationError("version 1 has no compression bzip2");
    archive.setVersion(version);
    archive.setCompression(isBzip2 ? Compression::Bzip2 : Compression::Zlib);
}

int create(const ArchiveOptions& options) {
    PackageArchive archive;
    setForm(archive, options);
    Collector collector(archive, options);
    for (const std::string& name : options.names) collector.add(name);
    saveArchive(archive, options.archive, options.level);
    return 0;
}

// --- The command line ---

using Run = int (*)(const ArchiveOptions& options);

struct Command {
    CLI::App* app;
    std::shared_ptr<ArchiveOptions> options;
};

Command addCommand(CLI::App& package, const char* name, const char* description, int& exitStatus, Run run) {
    const auto options = std::make_shared<ArchiveOptions>();
    CLI::App* command = package.add_subcommand(name, description);
    command->add_option("ARCHIVE", options->archive, "The archive")->type_name("")->required();
    command->callback([options, run, &exitStatus] { exitStatus = run(*options); });
    return {command, options};
}

void addCreate(CLI::App& package, int& exitStatus) {
    const auto [command, options] = addCommand(package, "create", "Makes an archive", exitStatus, create);
    command->add_option("NAME", options->names, "The files, and directories with all below them")
        ->type_name("")
        ->required();
    command->add_option("-C", options->directory, "The directory in which the names are found")
        ->type_name("DIR");
    command->add_option("--version", options->version, "The version of the form: 1 (the default) or 2")
        ->type_name("N")
        ->check(CLI::IsMember({1, 2}));
    command
        ->add_option("--compression", options->compression,
                     "zlib (the default) or bzip2, which takes version 2")
        ->type_name("NAME")
        ->check(CLI::IsMember({"zlib", "bzip2"}));
    command->add_option("--level", options->level, "How hard to compress, up to 9; default 7")
        ->type_name("N");
}

void addExtract(CLI::App& package, int& exitStatus) {
    const auto [command, options] = addCommand(package, "extract", "Extracts files", exitStatus, extract);
    command->add_option("NAME", options->names, "The files; all of them by default")->type_name("");
    command->add_option("-d", options->directory, "The directory to extract to")->type_name("DIR");
    command->add_flag("--overwrite", options->overwrite, "Replaces files that are there");
}

}  // namespace

void addArchiveCommands(CLI::App& package, int& exitStatus) {
    addCommand(package, "list", "Lists the files of an archive", exitStatus, list);
    addCreate(package, exitStatus);
    addExtract(package, exitStatus);
    const auto [command, options] =
        addCommand(package, "cat", "Prints a file of an archive", exitStatus, cat);
    command->add_option("NAME", options->names, "The file")->type_name("")->required()->expected(1);
}

}  // namespace cli
