#pragma once

/// Has the engine describe its pages to assistive tools such as screen readers, if
/// any are in use; by itself it shows them an empty document. To be called before
/// the first profile exists, which starts the engine.
void announceAssistiveTools();
