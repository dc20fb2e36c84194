#pragma once

#include <QString>

/// What pages keep on this machine besides cookies: local storage, databases, service workers.
/// The engine holds these files open and cannot empty them while it runs, so they are marked
/// and removed at the next start.

/// Marks what is stored in the profile's folder `folder`. False if that failed.
bool markStoredWebData(const QString& folder);

/// Removes from `folder` what was marked. To be called before an engine uses the folder.
void removeMarkedWebData(const QString& folder);

/// Takes away from `folder` the file in which the engine notes the icon of every page with the
/// page's address, and keeps the engine from making it anew. To be called before an engine uses
/// the folder.
void keepIconsOffDisk(const QString& folder);
