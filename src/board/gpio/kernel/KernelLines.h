#pragma once

#include "board/gpio/bank/Epoll.h"
#include "board/gpio/bank/GPIOBank.h"
#include "board/gpio/kernel/KernelChip.h"
#include "board/gpio/kernel/KernelRequest.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// The lines of one chip that this process holds. A line is asked for when it is first needed and
/// then kept, as a line has one holder: all who read, watch and drive it share this object.
///
/// Lines that are read are packed into as few requests as possible. A line that drives has one of
/// its own, which nothing but the end of this object closes. Not thread-safe.
class KernelLines {
public:
    /// Why the lines that had to be asked for could not be had; empty for those that could.
    using Outcome = std::map<int, Cause>;

    /// `reports` outlives it, and is readable when collect() has something to find.
    KernelLines(std::unique_ptr<KernelChip> chip, int group, const Epoll& reports);
    ~KernelLines();

    /// Marks a line as one whose changes count; hold() then makes it an input. A line that this
    /// process drives stays an output, and each drive counts as a change.
    void watch(int bit) { m_Watched.insert(bit); }
    void unwatch(int bit) { m_Watched.erase(bit); }

    /// Asks for those of the lines that are not held as they should be.
    Outcome hold(const std::set<int>& bits);

    /// Reads lines, each into its reading: one system call for each request.
    void read(const std::vector<GPIOReading*>& readings);

    /// Makes a line an output with this level. False, and `cause`, on failure.
    bool drive(int bit, int level, Cause& cause);

    /// Takes what the kernel has reported.
    void collect();

    /// True when one of the lines may have changed since the changes were forgotten.
    bool isAnyChanged(const std::set<int>& bits) const;
    void forgetChanges() { m_Changed.clear(); }

    /// True when one of the lines was asked for and could not be had.
    bool isAnyRefused(const std::set<int>& bits) const;

    /// True when one of the lines may change, or have changed, without a report: the kernel cannot
    /// report it, or its last reading failed.
    bool isAnyUnsure(const std::set<int>& bits) const;

    /// True when the chip was found to have been taken away.
    bool isGone() const { return m_IsGone; }

    dev_t getChipNumber() const { return m_Chip->getNumber(); }

private:
    using Request = std::shared_ptr<KernelRequest>; // held by each of its lines

    struct Held {
        Request request;
        std::size_t place; // of the line among those of the request
    };

    KernelLine describe(int bit) const;
    bool isHeld(int bit) const;
    std::map<int, Held>::iterator find(int bit, std::map<int, Held>::iterator before);
    void take(const std::vector<KernelLine>& lines);
    bool takeTogether(const std::vector<KernelLine>& lines);
    bool takeSilently(KernelLine line);
    void give(const Request& request);
    void pack();
    void release(int bit);
    void remake(std::set<Request>& requests, int without);
    void collect(const KernelRequest& request);
    void endReports(const KernelRequest& request);
    Cause explain(int bit, int error);

    const std::unique_ptr<KernelChip> m_Chip;
    const int m_Group;
    const Epoll& m_Reports; // over m_Reporting, each told by its first line
    std::map<int, Held> m_Held;
    std::vector<const KernelRequest*> m_Reporting; // those with inputs
    std::map<int, Cause> m_Refused;                // lines that somebody wants, with the causes
    std::set<int> m_Silent;                        // lines whose changes the kernel cannot report
    std::set<int> m_Unread;                        // lines whose last reading failed
    std::set<int> m_Watched;
    std::vector<int> m_Changed; // some twice, perhaps
    bool m_IsScattered = false; // more requests than needed, perhaps
    bool m_IsGone = false;
};
