#pragma once

/// Has pages told that the desktop is dark (`prefers-color-scheme`), if it is now. To be
/// called before the first profile, which starts the engine; later changes do not reach
/// the pages of this run.
void announceDarkDesktop();
