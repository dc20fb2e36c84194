#pragma once

#include "launcher/InstancePlace.h"
#include "launcher/InstanceLock.h"

#include <chrono>
#include <string>

/// What the started copy brings with it. Texts are UTF-8.
struct StartRequest {
    /// The title that the caption of a running copy's frame begins with.
    std::string title;
    /// The address to open; empty: a running copy comes to the front.
    std::string address;
    std::string activationToken;
    std::string startupId;
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
