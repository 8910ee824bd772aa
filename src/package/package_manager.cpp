#include "package/package_manager.h"

namespace package {

PackageRecord recordOf(PackageDescriptionFile& description) {
    PackageVersion version = PackageVersion::parse(description.attribute("version"));
    if (!version.isSet()) version = {0, 0, -1};
    return {.name = description.attribute("name"),
            .installedVersion = version,
            .installationDirectory = description.attribute("installation_directory"),
            .files = description.installedFiles()};
}

}  // namespace package
