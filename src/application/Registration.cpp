#include "application/Registration.h"

#include "application/dispatch/Subscription.h"

#include <utility>

namespace nvrhw {

Registration::Registration(std::shared_ptr<Subscription> subscription)
    : m_Subscription(std::move(subscription)) {}

Registration::~Registration() { end(); }

Registration& Registration::operator=(Registration&& other) noexcept {
    if (this != &other) {
        end();
        m_Subscription = std::move(other.m_Subscription);
    }
    return *this;
}

void Registration::end() {
    if (const auto subscription = std::exchange(m_Subscription, nullptr)) {
        subscription->end();
    }
}

bool Registration::endCurrent() { return Subscription::endCurrent(); }

void Registration::finish() {
    if (const auto subscription = std::exchange(m_Subscription, nullptr)) {
        subscription->finish();
    }
}

} // namespace nvrhw
