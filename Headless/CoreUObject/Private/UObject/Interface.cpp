#include "UObject/Interface.h"

IMPLEMENT_CLASS(UInterface)
