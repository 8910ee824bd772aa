#include "importer/import.h"

int main(int argc, char** argv) {
    return importer::run(argc, argv);
}
