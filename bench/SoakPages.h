#pragma once

#include <QStringList>

class LoopbackServer;

/// The paths of pages of all kinds: a text, frames, an image, a title that changes.
const QStringList& soakPages();

/// Makes the server answer with them, with "/opener", which opens one of them in
/// a window of its own, and with "/endless", which never finishes.
void scriptSoakPages(LoopbackServer& server);
