#include "application/Error.h"

namespace nvrhw {

namespace {

std::string textOf(const std::string& what, const std::vector<Cause>& causes) {
    if (causes.size() == 1) {
        return what + ": " + causes.front().text();
    }
    std::string text = what;
    for (const Cause& cause : causes) {
        text += "\n  " + cause.text();
    }
    return text;
}

} // namespace

Error::Error(Code code, const std::string& what) : Error(code, what, {}) {}

Error::Error(Code code, const std::string& what, std::vector<Cause> causes)
    : std::runtime_error(textOf(what, causes)), m_Code(code),
      m_Causes(std::make_shared<const std::vector<Cause>>(std::move(causes))) {}

const std::vector<Cause>& Error::causes() const noexcept { return *m_Causes; }

} // namespace nvrhw
