#pragma once

#include "CoreMinimal.h"
#include "MovieSceneSignedObject.h"

class UMovieScene;

/** An asset or sub-object that plays a movie scene (a level sequence, a widget animation...). */
class UMovieSceneSequence : public UMovieSceneSignedObject
{
	DECLARE_CLASS(UMovieSceneSequence, UMovieSceneSignedObject, CLASS_Abstract, CASTCLASS_None, TEXT("/Script/MovieScene"), MOVIESCENE_API)

public:
	MOVIESCENE_API UMovieSceneSequence();

	/** The movie scene this sequence plays; null until it has one. */
	virtual UMovieScene* GetMovieScene() const { return nullptr; }
	/** The name shown for the sequence. */
	MOVIESCENE_API virtual FText GetDisplayName() const;
};
