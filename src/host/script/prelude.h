#pragma once

#include <QString>

// The JavaScript that installs the script's globals and the proxies through
// which it reaches the component: a function of (host, global object, URL).
QString preludeSource();
