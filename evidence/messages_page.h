#pragma once

/// The manual's page of messages in HTML, as it stands among the help's sources. The build makes
/// this text of it.
extern const char* const kPaginaMensajes;
