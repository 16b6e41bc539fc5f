#pragma once

#include <vector>

#include "platform/cstring.h"

/// A target that somebody has worked on since a killed run left it.
struct CTocado {
    CString nombre;
    CString anterior; ///< what has the bytes from before that run

    CString Frase() const; ///< that says so to the user
};

/// Sees to it that none of these files, which a run is about to read or write, is part of a set of
/// outputs (output_set.h) that is half done; to be called before the first is opened. Empty names
/// are passed over.
///
/// A set of a run that is alive is waited for, a few seconds at most. By the diary of one that was
/// killed its targets get back what they held, the other files of these folders as well, but for
/// what was worked on since, which stays and is given back by name; then
/// outputs that were never finished, and what targets held before, are put away. A diary is
/// believed about its own folder, and as far as its owner could have done the same himself; one
/// that isn't believed stays.
///
/// Raises CFileException where one of the files stays half done: it is still being changed, or this
/// user can't give back what it held; and where a folder or a diary can't be read. A folder that
/// isn't there or is forbidden is passed over: whoever opens a file there will be told.
std::vector<CTocado> SanaConjuntos(const std::vector<CString>& nombres);
