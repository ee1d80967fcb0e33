#include "platform/SoftwarePackage.h"

#include "board/documents/ConfigError.h"
#include "board/documents/IniFile.h"

namespace {

constexpr char SOURCE[] = "SoftwarePackageParser";
constexpr char SUBJECT[] = "SoftwarePackage";

constexpr char PACKAGE[] = "package";
constexpr char NAME[] = "name";
constexpr char VERSION[] = "version";
constexpr char BUILD_DATE[] = "buildDate";
constexpr char COMPONENTS[] = "components";

} // namespace

struct SoftwarePackageParser::Impl {}; // nothing is kept from one file to the next

SoftwarePackageParser::SoftwarePackageParser() = default;

SoftwarePackageParser::~SoftwarePackageParser() = default;

int SoftwarePackageParser::parse(const std::string& fileName, SoftwarePackage& package) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        const IniFile file(GlobalEnv::getInstance()->resolve(fileName));
        SoftwarePackage read;
        read.setName(file.value(PACKAGE, NAME));
        read.setVersion(file.value(PACKAGE, VERSION));
        read.setBuildDate(file.value(PACKAGE, BUILD_DATE));
        read.setComponents(file.section(COMPONENTS));
        package = read;
    });
}
