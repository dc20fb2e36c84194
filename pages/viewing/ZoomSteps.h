#pragma once

/// The steps in which a page is made larger and smaller, in percent of its
/// own size: from 25 to 500, as users know them from elsewhere.

constexpr int normalZoom = 100;

/// The next step above or below `percent`, which need not be a step itself;
/// at the end of the steps the last one.
int zoomedIn(int percent);
int zoomedOut(int percent);

/// The step that `turns` steps of the wheel lead to: up (positive) is larger.
int zoomedBy(int percent, int turns);
