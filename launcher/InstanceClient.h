#pragma once

#include "launcher/InstanceMessage.h"
#include "launcher/InstancePlace.h"

#include <chrono>
#include <string>

/// What the started copy brings with it.
struct StartRequest {
    /// The title that the caption of a running copy's frame begins with. UTF-8.
    std::string title;
    /// What a running copy is told: the address to open, or to come to the front.
    InstanceMessage message;
    /// How long a running copy may take to answer, its start or end included.
    std::chrono::milliseconds patience = std::chrono::seconds(30);
};

enum class Outcome { FirstCopy, HandedOver, Failed };

struct StartResult {
    Outcome outcome = Outcome::Failed;
    /// Held for `FirstCopy`.
    InstanceLock lock;
    /// For `Failed`: one line in German for the user, without line end.
    std::string error;
};

/// Makes this process the user's one running copy, or hands the request to the
/// copy that runs and waits until that has handled it. Blocks; throws nothing
/// but std::bad_alloc.
StartResult takePlaceOrHandOver(const InstanceFolder& folder, const StartRequest& request);
