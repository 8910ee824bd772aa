// The same images through the tools of binutils and srecord.
#include "loadfiles/image_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace {

using namespace loadfiles_test;

std::string noise(std::size_t size) {
    std::mt19937 generator(static_cast<std::uint32_t>(size));
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(generator());
    return bytes;
}

/// Images with gaps, across 64 KiB and 16 MiB, and at the end of the address space.
const std::vector<std::vector<Chunk>> images = {
    {{0, noise(1)}},
    {{0x100, noise(100)}, {0x200, noise(33)}, {0x1000, noise(1)}},
    {{0xFFF3, noise(70'000)}, {0x30000, noise(17)}},
    {{0xFFFFF3, noise(40)}, {0x1FFFFFF, noise(2)}, {0x8000000, noise(1000)}},
    {{0x8000000, noise(300)}, {0xFFFFFFF0, noise(16)}},
};

struct Peer {
    Format format;
    const char* extension;
    const char* objcopyName;
    const char* srecName;
};

const Peer peers[] = {
    {Format::SRecord, "srec", "srec", "-motorola"},
    {Format::IntelHex, "hex", "ihex", "-intel"},
    {Format::TIHex, "txt", nullptr, "-ti-txt"},
};

void run(const Directory& directory, const std::string& command) {
    const std::string quiet = "cd " + directory.file("") + " && " + command + " >peer.log 2>&1";
    ASSERT_EQ(std::system(quiet.c_str()), 0) << command << "\n" << directory.read("peer.log");
}

std::string in(const Peer& peer) {
    return std::string("in.") + peer.extension;
}

std::string out(const Peer& peer) {
    return std::string("out.") + peer.extension;
}

/// Reads the peer's file; empty lines of its output do not count as bytes.
std::vector<Chunk> readBack(const Directory& directory, const Peer& peer) {
    const auto file = readLoadFile(peer.format, directory.file(out(peer)));
    file->sortSections();
    return chunksOf(*file);
}

/// TI-TXT of the peer ends at 1 MiB.
bool isInReach(const Peer& peer, const std::vector<Chunk>& image) {
    return peer.format != Format::TIHex || image.back().address < 0x100000;
}

TEST(Peers, ReadWhatWeWriteAndWriteWhatWeRead) {
    const Directory directory;
    for (const auto& image : images)
        for (const Peer& from : peers) {
            write(*makeCodeBuffer(from.format, directory.file(in(from))), image, 0x1234);
            for (const Peer& to : peers) {
                SCOPED_TRACE(std::string(from.extension) + " to " + to.extension);
                if (!isInReach(from, image) || !isInReach(to, image)) continue;
                run(directory,
                    "srec_cat " + in(from) + " " + from.srecName + " -o " + out(to) + " " + to.srecName);
                EXPECT_EQ(readBack(directory, to), image);
                if (from.objcopyName == nullptr || to.objcopyName == nullptr) continue;
                run(directory, std::string("objcopy -I ") + from.objcopyName + " -O " + to.objcopyName + " " +
                                   in(from) + " " + out(to));
                EXPECT_EQ(readBack(directory, to), image);
            }
        }
}

TEST(Peers, AgreeOnEntryPoints) {
    const Directory directory;
    write(*makeCodeBuffer(Format::SRecord, directory.file("in.srec")), {{0x8000000, noise(20)}}, 0x1234);
    for (const Peer& peer : {peers[0], peers[1]}) {
        run(directory, std::string("objcopy -I srec -O ") + peer.objcopyName + " in.srec " + out(peer));
        EXPECT_EQ(readLoadFile(peer.format, directory.file(out(peer)))->entryPoint(), 0x1234U);
        run(directory,
            "srec_cat in.srec --execution-start-address 0x8000131 -o " + out(peer) + " " + peer.srecName);
        EXPECT_EQ(readLoadFile(peer.format, directory.file(out(peer)))->entryPoint(), 0x8000131U);
    }
}

}  // namespace
