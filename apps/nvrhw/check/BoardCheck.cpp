#include "BoardCheck.h"

#include "AbilityCheck.h"
#include "DocumentRules.h"
#include "DocumentWalker.h"
#include "HardwareCheck.h"
#include "IniCheck.h"
#include "MonitorCheck.h"
#include "board/documents/ConfigError.h"
#include "board/documents/TextFile.h"
#include "config/ConfigFileNameConst.h"

namespace {

using Files = ConfigFileNameConst;

constexpr char GPIO_DEVICE[] = "/dev/gpiodrv";
constexpr char MONITOR_PARAMS[] = "/mnt/mtd/code/config_file/MonitorParamConfig.xml";
constexpr char CLOCK[] = "/hd1/program/config/RTCDriverConfig.xml"; // from a folder beside config

std::string resolve(const std::string& path) { return GlobalEnv::getInstance()->resolve(path); }

} // namespace

std::vector<Finding> BoardCheck::run() {
    BoardCheck check;
    check.checkDocuments();
    return check.m_Findings.sorted();
}

void BoardCheck::checkDocuments() {
    HardwareCheck lines(m_Findings, resolve(GPIO_DEVICE));
    const auto hardware = walk("hardware configuration", Files::getHardwareConfigFileName(),
                               DocumentRules::hardware());
    if (hardware) {
        lines.check(*hardware);
    }
    IniCheck(m_Findings, "machine information", resolve(Files::getMachineInfoFileName()))
        .check(IniCheck::machineInfo());
    IniCheck(m_Findings, "software package", resolve(Files::getSoftwarePackageFileName()))
        .check(IniCheck::softwarePackage());
    walk("file systems", Files::getFileSystemFileName(), DocumentRules::fileSystems());
    walk("clock", CLOCK, DocumentRules::clock(), "no such file: /dev/rtc0 in UTC is taken");
    const auto monitors = walk("monitor parameters", MONITOR_PARAMS, DocumentRules::monitors(),
                               "no such file: no monitor has parameters until some are set");
    const auto document =
        walk("device ability", Files::getNVRAbilityFileName(), DocumentRules::ability());
    if (!document) {
        return;
    }
    AbilityCheck ability(m_Findings, *document);
    ability.check();
    if (hardware) {
        ability.checkAlarms(*hardware);
    }
    if (monitors) {
        MonitorCheck(m_Findings, ability.monitors()).check(*monitors);
    }
}

std::optional<XmlElement> BoardCheck::walk(const char* title, const std::string& file,
                                           const ElementRule& rule, const char* whenMissing) {
    const std::string path = resolve(file);
    try {
        std::string text;
        if (whenMissing == nullptr) {
            text = TextFile::read(path);
        } else if (!TextFile::readIfPresent(path, text)) {
            m_Findings.add({path, 0, Finding::WARNING, title, whenMissing});
            return std::nullopt;
        }
        const auto document = std::make_shared<XmlDocument>(path, text);
        if (document->doctypeLine() > 0) {
            m_Findings.add({path, document->doctypeLine(), Finding::WARNING, title,
                            "the document type and its entities are ignored"});
        }
        const XmlElement root(document);
        const bool isClock = &rule == &DocumentRules::clock(); // its element may stand alone
        const ElementRule& only = isClock ? rule.children.front() : rule;
        DocumentWalker(m_Findings).check(root, root.name() == only.name ? only : rule);
        return root;
    } catch (const ConfigError& error) {
        m_Findings.add({path, error.line(), Finding::ERROR, title, error.cause()});
        return std::nullopt;
    }
}
