#include "platform/SoftwarePackage.h"

#include "board/documents/ConfigError.h"
#include "board/documents/IniFile.h"
#include "board/documents/schema/PackageSchema.h"

namespace {

using Schema = PackageSchema;

constexpr char SOURCE[] = "SoftwarePackageParser";
constexpr char SUBJECT[] = "SoftwarePackage";

} // namespace

struct SoftwarePackageParser::Impl {}; // nothing is kept from one file to the next

SoftwarePackageParser::SoftwarePackageParser() = default;

SoftwarePackageParser::~SoftwarePackageParser() = default;

int SoftwarePackageParser::parse(const std::string& fileName, SoftwarePackage& package) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const IniFile file(GlobalEnv::getInstance()->resolve(fileName));
        const auto value = [&](const FieldSchema& key) {
            return file.value(Schema::PACKAGE.name, key.name);
        };
        SoftwarePackage read;
        read.setName(value(Schema::NAME));
        read.setVersion(value(Schema::VERSION));
        read.setBuildDate(value(Schema::BUILD_DATE));
        read.setComponents(file.section(Schema::COMPONENTS.name));
        package = read;
    });
}
