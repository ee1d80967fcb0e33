#include "panel/PanelWords.h"

#include "print/Duration.h"

#include <cstdio>

namespace {

constexpr double MINUTE = 60.0;

std::string title(const char* what, const Line& line) {
    return what + std::to_string(line.id) + (line.name.empty() ? "" : " \"" + line.name + "\"") +
           ": bank " + std::to_string(line.group) + ", bit " + std::to_string(line.bit);
}

template <typename T> std::string format(const char* pattern, T value) {
    char text[32];
    std::snprintf(text, sizeof text, pattern, value);
    return text;
}

} // namespace

PanelListView::Cell PanelWords::state(const PanelInput& input) {
    switch (input.state()) {
    case PanelInput::ALARM:
        return {L"\u25CF ALARM", PanelScreen::BAD};
    case PanelInput::NORMAL:
        return {L"\u25CB normal", PanelScreen::GOOD};
    case PanelInput::UNREADABLE:
        return {L"? unreadable", PanelScreen::DOUBTFUL};
    default:
        return {L"? unknown", PanelScreen::DOUBTFUL};
    }
}

PanelListView::Cell PanelWords::state(const PanelOutput& output) {
    if (output.level < 0) {
        return {L"? unreadable", PanelScreen::DOUBTFUL};
    }
    const std::wstring symbol = output.isActive() ? L"\u25CF " : L"\u25CB ";
    if (output.operation == PanelOutput::FLASHING) {
        return {symbol + L"flashing", PanelScreen::BUSY};
    }
    return output.isActive() ? PanelListView::Cell{symbol + L"active", PanelScreen::BUSY}
                             : PanelListView::Cell{symbol + L"normal", PanelScreen::PLAIN};
}

std::string PanelWords::remaining(const PanelOutput& output) {
    if (output.operation == PanelOutput::NONE) {
        return output.isActive() ? "no end" : "";
    }
    if (output.remaining == 0.0) {
        return output.mode.getTimeout() == 0 ? "no end" : "0.0 s"; // over with the next pass
    }
    if (output.remaining < MINUTE) {
        return format("%.1f s", output.remaining);
    }
    const int seconds = static_cast<int>(output.remaining);
    return std::to_string(seconds / 60) + format(":%02d min", seconds % 60);
}

std::string PanelWords::mode(const AlarmOutMode& mode) {
    std::string text = "steady";
    if (mode.getMode() == AlarmOutMode::Flash) {
        text = "flash " + format("%g/s", static_cast<double>(mode.getFrequency()));
    } else if (mode.getMode() == AlarmOutMode::Pulse) {
        text = "pulse of 10 ms";
    }
    if (mode.getTimeout() > 0 && mode.getMode() != AlarmOutMode::Pulse) {
        text += " for " + Duration::text(mode.getTimeout());
    }
    return text + (mode.getValidSignal() == AlarmOutMode::Inverted ? ", inverted" : "");
}

std::string PanelWords::detail(const PanelInput& input) {
    return title("input ", input.line) + "; in alarm at level " +
           std::to_string(input.line.validLevel);
}

std::string PanelWords::detail(const PanelOutput& output) {
    return title("output ", output.line) + "; active at level " +
           std::to_string(output.activeLevel()) + "; " + mode(output.mode);
}

std::string PanelWords::place(const Line& line) {
    return std::to_string(line.group) + "/" + std::to_string(line.bit);
}

std::wstring PanelWords::level(int level) { return level < 0 ? L"-" : std::to_wstring(level); }
