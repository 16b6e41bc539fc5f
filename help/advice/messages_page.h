#pragma once

/// The manual's page of messages, as it stands among the help's sources. The build puts it here.
const char* PaginaMensajes();
