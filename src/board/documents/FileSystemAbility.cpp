#include "platform/FileSystemAbility.h"

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"
#include "board/documents/schema/FileSystemSchema.h"

namespace {

using Schema = FileSystemSchema;

constexpr char SOURCE[] = "FileSystemAbilityConfig";
constexpr char SUBJECT[] = "FileSystemAbility";

FileSystemAbility readItem(const XmlElement& item) {
    FileSystemAbility ability;
    ability.setFileSystemId(item.number(Schema::ID));
    ability.setName(item.text(Schema::NAME));
    ability.setMaxPartitionSize(item.number(Schema::MAX_PARTITION_SIZE));
    ability.setSupportFormatFlag(item.flag(Schema::SUPPORT_FORMAT_FLAG));
    ability.setSupportRecordFlag(item.flag(Schema::SUPPORT_RECORD_FLAG));
    return ability;
}

} // namespace

int FileSystemAbilityConfig::parseFileSystemAbilityConfig(
    const std::string& fileName, std::vector<FileSystemAbility>& abilities) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        std::vector<FileSystemAbility> read;
        const XmlElement section = XmlElement::readRoot(fileName).child(Schema::SECTION.name);
        for (const XmlElement& item : section.children(XmlElement::ITEM)) {
            read.push_back(readItem(item));
        }
        abilities = read;
    });
}
