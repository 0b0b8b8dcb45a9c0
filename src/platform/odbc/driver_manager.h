#pragma once

/// The headers of the ODBC driver manager, in the one order that every system takes.
#ifdef _WIN32
#define NOMINMAX
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
