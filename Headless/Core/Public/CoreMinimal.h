#pragma once

// What nearly every file of the engine and of the plug-in starts with. It is also the
// precompiled header, so it only gathers widely used headers and adds nothing of its own.

#include "CoreTypes.h"
#include "Templates/UnrealTemplate.h"
#include "Templates/TypeHash.h"
#include "Templates/Tuple.h"
#include "Templates/SharedPointer.h"
#include "Templates/UniquePtr.h"
#include "Templates/Function.h"
#include "Misc/Optional.h"
#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "Containers/Set.h"
#include "Containers/Map.h"
#include "Misc/StringFormatArg.h"
#include "UObject/NameTypes.h"
#include "Internationalization/Text.h"
#include "Misc/Guid.h"
#include "Delegates/Delegate.h"
