#pragma once

/// Makes German the language of what Qt and the engine say by themselves:
/// buttons, context menus, the engine's own pages. To be called once, after
/// the application object and before the first engine exists. Texts whose
/// translation is not installed stay English.
void installGermanTexts();
