#pragma once

/// Gives memory that this process has freed back to the system. The C library keeps most of it:
/// after a hundred windows have closed that is twice what the program needs.
void returnFreeMemory();
