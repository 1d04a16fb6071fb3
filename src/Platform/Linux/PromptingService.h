// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libsecret/secret.h>

namespace cadorel {

class AnswerWatch;

/// What the prompts of one call need to know, and what they leave behind.
struct PromptScope
{
    /// Where events of the connection arrive.
    GMainContext *context = nullptr;
    /// Stands still while a prompt is open.
    AnswerWatch *watch = nullptr;
    /// The listener has closed a prompt without an answer.
    bool wasDismissed = false;
};

/// A SecretService on the connection that its property "g-connection" names, which waits for the listener's
/// answer to a prompt for as long as it takes, but ends at once when the call is cancelled, or when the
/// service or the bus goes away. libsecret's own waits on until the service confirms the dismissal. For calls
/// that end before they return.
GType promptingServiceType();

/// For the prompts of the next calls of @p service; null when there will be none.
void setPromptScope(SecretService *service, PromptScope *scope);

} // namespace cadorel
