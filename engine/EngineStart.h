#pragma once

/// Tells the engine what it learns at its start only: where dictionaries are, whether
/// assistive tools are in use, whether the desktop is dark, and what local pages may read.
/// To be called before the first profile, which starts the engine, and while there are no
/// other threads that read the environment. Flags that the user has set there stay.
void prepareEngineStart();
