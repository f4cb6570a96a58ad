#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/** The base of the sequence data that notes its changes (movie scenes, tracks, sections). */
class UMovieSceneSignedObject : public UObject
{
	DECLARE_CLASS(UMovieSceneSignedObject, UObject, CLASS_None, CASTCLASS_None, TEXT("/Script/MovieScene"), MOVIESCENE_API)

public:
	MOVIESCENE_API UMovieSceneSignedObject();
};
