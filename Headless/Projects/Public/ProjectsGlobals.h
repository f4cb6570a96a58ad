#pragma once

#include "CoreTypes.h"

#ifndef PROJECTS_API
#define PROJECTS_API
#endif
