#pragma once

/// A point of the screen, in its pixels.
struct POINT {
    int x = 0;
    int y = 0;
};

/// What a request for context help carries.
struct HELPINFO {
    int iCtrlId; ///< control asked about, negative for a label or a group box
    POINT MousePos{};
};
