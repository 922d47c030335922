#pragma once

/// From now on SIGTERM ends this process only where another one has sent it. GTK, which Qt asks for
/// the desktop's theme, has GLib raise one in the process whose session bus has died; a bus comes
/// back, and so does the icon.
void surviveOwnSigterm();
