#include "importer/import.h"

#include <malloc.h>

int main(int argc, char** argv) {
    // What the text of the manifest leaves serves the tree: on a large import, fresh pages cost more than all
    // else.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    return importer::run(argc, argv);
}
