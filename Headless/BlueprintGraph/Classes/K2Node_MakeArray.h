#pragma once

// Make Array is one of the container makers.
#include "K2Node_MakeContainer.h"
