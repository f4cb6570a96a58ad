#pragma once

// The class cast lives beside the object cast it extends.
#include "K2Node_DynamicCast.h"
