#pragma once

#include "board/runtime/FileDescriptor.h"
#include "platform/Cause.h"

#include <memory>
#include <string>
#include <sys/types.h>
#include <utility>

struct gpio_v2_line_request;

/// An open GPIO character device. It is of no use any more when the chip is taken away.
class KernelChip {
public:
    /// Opens the device that a path leads to; null, and `cause`, when it cannot be used.
    static std::unique_ptr<KernelChip> open(const std::string& path, Cause& cause);

    /// What its driver calls it, and how many lines it has, for whoever may only read its entry.
    static void look(const std::string& path, std::string& label, int& lines);

    /// The device number, which no other chip gets as long as this object lives.
    dev_t getNumber() const { return m_Number; }

    /// False, and `cause`, when the chip has no such line.
    bool has(int bit, Cause& cause) const;

    /// True when the line drives, whoever has made it an output.
    bool isOutput(int bit) const;

    /// Who has the line, maybe this process, for a sentence that begins "line 3 is ": `held by
    /// "x"`, "held by nvrhw (pid 412, recorder): a running recorder ...", "in use". Empty when
    /// nobody has it.
    std::string describeUse(int bit) const;

    /// Why a line cannot be had, from the error number of the attempt; says who has it.
    Cause explain(int bit, int error) const;

    /// Asks for lines in the name of this process; no descriptor, and errno, on failure.
    FileDescriptor request(gpio_v2_line_request& request) const;

private:
    KernelChip(FileDescriptor chip, std::string path)
        : m_Chip(std::move(chip)), m_Path(std::move(path)) {}

    bool identify(Cause& cause);

    FileDescriptor m_Chip;
    const std::string m_Path;
    dev_t m_Number = 0;
    int m_Count = 0; // of lines
};
