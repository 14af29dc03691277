#pragma once

#include "host/Data.h"

// The moment it is, by the machine's clock and time zone.
Data Agora();
