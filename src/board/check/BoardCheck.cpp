#include "board/check/BoardCheck.h"

#include "board/check/DocumentCheck.h"
#include "board/documents/ReplaceableFile.h"
#include "board/documents/schema/AbilitySchema.h"
#include "board/documents/schema/ClockSchema.h"
#include "board/documents/schema/FileSystemSchema.h"
#include "board/documents/schema/HardwareSchema.h"
#include "board/documents/schema/MachineSchema.h"
#include "board/documents/schema/MonitorSchema.h"
#include "board/documents/schema/PackageSchema.h"
#include "board/gpio/GPIODevice.h"

namespace {

std::string resolve(const std::string& path) { return GlobalEnv::getInstance()->resolve(path); }

DocumentCheck checkOf(Findings& findings, const DocumentSchema& schema) {
    return {findings, schema, resolve(schema.path)};
}

/// The monitors' file is the one that the library writes.
void checkIsWritable(Findings& findings, const DocumentSchema& schema) {
    Cause cause;
    try {
        cause = ReplaceableFile(resolve(schema.path)).obstacle();
    } catch (const ConfigError& error) {
        cause = error.cause();
    }
    if (cause) {
        cause.what = "cannot be changed: " + cause.what;
        findings.add(Finding::WARNING, schema.title, cause);
    }
}

} // namespace

std::vector<Finding> BoardCheck::run(Scope scope) {
    Findings findings;
    const auto hardware = checkOf(findings, HardwareSchema::DOCUMENT).checkXml();
    checkLines(findings, resolve(GPIODevice::PATH), hardware, scope == EVERYTHING);
    if (scope == HARDWARE) {
        return findings.sorted();
    }
    checkOf(findings, MachineSchema::DOCUMENT).checkIni();
    checkOf(findings, PackageSchema::DOCUMENT).checkIni();
    checkOf(findings, FileSystemSchema::DOCUMENT).checkXml();
    checkOf(findings, ClockSchema::DOCUMENT).checkXml();
    const auto monitors = checkOf(findings, MonitorSchema::DOCUMENT).checkXml();
    checkIsWritable(findings, MonitorSchema::DOCUMENT);
    if (const auto document = checkOf(findings, AbilitySchema::DOCUMENT).checkXml()) {
        checkAbilities(findings, *document, hardware, monitors);
    }
    return findings.sorted();
}
