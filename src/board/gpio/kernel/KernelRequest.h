#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/GPIOLineSettings.h"

#include <cstdint>
#include <memory>
#include <vector>

class KernelChip;

/// A line of a GPIO chip and how the kernel shall treat it.
struct KernelLine {
    enum Role {
        AS_IS,  ///< read without a change of its direction
        INPUT,  ///< watched for both edges, unless it is silent
        OUTPUT, ///< driven
    };

    int bit = 0;
    Role role = AS_IS;
    GPIOLineSettings settings{};
    bool isAlone = false;  ///< it must not share a request, which is closed when others come
    bool isSilent = false; ///< an input whose changes the kernel cannot report

    /// The kernel's line flags.
    std::uint64_t flags() const;

    /// Microseconds; 0 for none.
    std::uint32_t debounce() const;
};

/// Up to 64 lines of a chip that the kernel has given to this process, until the object goes. Not
/// thread-safe. A failed operation leaves its cause in errno.
class KernelRequest {
public:
    /// True when the kernel can take these lines in one request.
    static bool fit(const std::vector<KernelLine>& lines);

    /// Asks for lines that fit; outputs start with `level`. Null on failure.
    static std::unique_ptr<KernelRequest> open(const KernelChip& chip,
                                               const std::vector<KernelLine>& lines, int level = 0);

    /// Readable when a line that is an input has changed, or the chip has gone.
    int getDescriptor() const { return m_Request.get(); }

    const std::vector<KernelLine>& getLines() const { return m_Lines; }

    /// True when more lines could be in it.
    bool hasRoom() const;

    /// Wants the level of the line at this place in getLines().
    void ask(std::size_t place);

    /// Gives a level that was asked for; the first such call reads all of them, in one system call.
    bool read(std::size_t place, int& level);

    /// Makes the only line an output with this level, or gives the output it is this level.
    bool drive(const GPIOLineSettings& settings, int level);

    /// Takes the pending changes: adds the bits of the lines, and notes their times for this group.
    bool takeChanges(int group, std::vector<int>& bits) const;

private:
    static constexpr int UNREAD = -1;

    KernelRequest(FileDescriptor request, const std::vector<KernelLine>& lines)
        : m_Request(std::move(request)), m_Lines(lines) {}

    const FileDescriptor m_Request;
    std::vector<KernelLine> m_Lines;
    std::uint64_t m_Asked = 0; // the lines, by their places
    std::uint64_t m_Levels = 0;
    int m_Error = UNREAD; // of reading those that were asked for; 0 for none
};
