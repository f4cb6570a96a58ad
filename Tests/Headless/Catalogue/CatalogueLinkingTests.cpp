#include "UObject/Class.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>

// CTest runs each case in its own process, so nothing else has registered the catalogue here:
// linking the module must be enough, as it is for the engine's compiled-in types.
TEST(CatalogueLinking, EngineClassesAreFoundWithoutStartingTheModule)
{
	UClass* Actor = FindObject<UClass>(nullptr, TEXT("/Script/Engine.Actor"));
	ASSERT_NE(Actor, nullptr);
	EXPECT_NE(Actor->FindFunctionByName(TEXT("K2_GetActorLocation")), nullptr);
}
