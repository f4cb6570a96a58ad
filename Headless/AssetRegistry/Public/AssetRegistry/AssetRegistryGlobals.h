#pragma once

#include "CoreTypes.h"

#ifndef ASSETREGISTRY_API
#define ASSETREGISTRY_API
#endif
