#pragma once

/// Tells whether a Ctrl-C can come: on Windows it takes a console.
bool PuedeInterrumpir();
/// One comes for this process, and is there when this returns.
void Interrumpe();
