#include "package/package_manager.h"

namespace package {

PackageRecord recordOf(PackageDescriptionFile& description) {
    return {.name = description.attribute("name"),
            .installedVersion = PackageVersion::parse(description.attribute("version")),
            .installationDirectory = description.attribute("installation_directory"),
            .files = description.installedFiles(),
            .kept = description.keptFiles()};
}

}  // namespace package
