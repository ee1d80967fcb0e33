#pragma once

#include "platform/base/Export.h"

#include <string>
#include <vector>

/// A file system the recorder supports.
class NVRHW_API FileSystemAbility {
public:
    /// The number that the document gives it.
    int getFileSystemId() const { return m_FileSystemId; }
    void setFileSystemId(int id) { m_FileSystemId = id; }

    /// As users know it, such as "ext4".
    const std::string& getName() const { return m_Name; }
    void setName(const std::string& name) { m_Name = name; }

    /// Largest partition, in GiB; 0 means no limit.
    int getMaxPartitionSize() const { return m_MaxPartitionSize; }
    void setMaxPartitionSize(int size) { m_MaxPartitionSize = size; }

    /// The recorder can format a disk with it.
    bool getSupportFormatFlag() const { return m_SupportFormatFlag; }
    void setSupportFormatFlag(bool flag) { m_SupportFormatFlag = flag; }

    /// The recorder can record to it (and not only export).
    bool getSupportRecordFlag() const { return m_SupportRecordFlag; }
    void setSupportRecordFlag(bool flag) { m_SupportRecordFlag = flag; }

private:
    int m_FileSystemId = 0;
    std::string m_Name;
    int m_MaxPartitionSize = 0;
    bool m_SupportFormatFlag = false;
    bool m_SupportRecordFlag = false;
};

/// Reads the file-system ability document, which docs/configuration.md describes.
class NVRHW_API FileSystemAbilityConfig {
public:
    /// Replaces `abilities` by the file systems of the document, in its order. Non-zero on
    /// success; 0, with the cause in the log and `abilities` untouched, when the document, a path
    /// of the board, cannot be read or has a bad item.
    static int parseFileSystemAbilityConfig(const std::string& fileName,
                                            std::vector<FileSystemAbility>& abilities);
};
