#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <string>

/// A text file that is only ever replaced whole, so that its readers, also in other processes and
/// after a power cut, see the old or the new content. Failures are ConfigErrors.
class ReplaceableFile {
public:
    /// The file need not exist, its folder must. A symbolic link stands for the file it leads to.
    explicit ReplaceableFile(const std::string& path);

    /// Waits until no other ReplaceableFile of this folder, in whatever process, is locked; keeps
    /// the lock as long as it lives.
    void lock();

    /// Why replace() would fail, as far as that can be told without writing; an empty Cause when it
    /// would not.
    Cause obstacle() const;

    /// With the lock held. When it fails before the new content stands in the file's place, the
    /// file is as it was.
    void replace(const std::string& text);

private:
    void writeTemporary(const std::string& text);
    void check(bool success) const;

    std::string m_Path;
    std::string m_Name;
    std::string m_TemporaryName;
    FileDescriptor m_Folder;
};
