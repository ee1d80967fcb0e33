#include "platform/FileSystemAbility.h"

#include "board/documents/ConfigError.h"
#include "board/documents/XmlElement.h"

namespace {

constexpr char SOURCE[] = "FileSystemAbilityConfig";
constexpr char SUBJECT[] = "FileSystemAbility";

constexpr char SECTION[] = "FileSystemAbility";
constexpr char ID[] = "id";
constexpr char NAME[] = "name";
constexpr char MAX_PARTITION_SIZE[] = "maxPartitionSize";
constexpr char SUPPORT_FORMAT_FLAG[] = "supportFormatFlag";
constexpr char SUPPORT_RECORD_FLAG[] = "supportRecordFlag";

constexpr XmlElement::Range ANY{};
constexpr XmlElement::Range SIZES{0, std::numeric_limits<int>::max()};

FileSystemAbility readItem(const XmlElement& item) {
    int maxPartitionSize = 0;
    bool supportFormat = false;
    bool supportRecord = false;
    FileSystemAbility ability;
    ability.setFileSystemId(item.require(ID, ANY));
    ability.setName(item.requireText(NAME));
    item.read(MAX_PARTITION_SIZE, maxPartitionSize, SIZES);
    item.read(SUPPORT_FORMAT_FLAG, supportFormat);
    item.read(SUPPORT_RECORD_FLAG, supportRecord);
    ability.setMaxPartitionSize(maxPartitionSize);
    ability.setSupportFormatFlag(supportFormat);
    ability.setSupportRecordFlag(supportRecord);
    return ability;
}

} // namespace

int FileSystemAbilityConfig::parseFileSystemAbilityConfig(
    const std::string& fileName, std::vector<FileSystemAbility>& abilities) {
    return ConfigError::guard(SUBJECT, SOURCE, __LINE__, [&] {
        std::vector<FileSystemAbility> read;
        const XmlElement section = XmlElement::readRoot(fileName).child(SECTION);
        for (const XmlElement& item : section.children(XmlElement::ITEM)) {
            read.push_back(readItem(item));
        }
        abilities = read;
    });
}
