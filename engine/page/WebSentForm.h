#pragma once

#include <QWebEngineHistory>

/// Whether the page shown is the answer to a form that was sent, so that loading it once
/// more would send the form again.
bool isFromSentForm(const QWebEngineHistory& history);
