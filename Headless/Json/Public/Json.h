#pragma once

// Everything of the Json module in one include, as the engine's Json.h offers it.

#include "CoreMinimal.h"

#include "JsonGlobals.h"

#include "Policies/CondensedJsonPrintPolicy.h"
#include "Policies/JsonPrintPolicy.h"
#include "Policies/PrettyJsonPrintPolicy.h"

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonTypes.h"

#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
