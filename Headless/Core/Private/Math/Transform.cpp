#include "Math/Transform.h"

#include "Containers/Array.h"
#include "Misc/ParseValue.h"

using UE::Core::Private::ECommaListResult;
using UE::Core::Private::ParseCommaSeparatedDoubles;
using UE::Core::Private::ParseValue;

namespace
{
	// FDefaultValueHelper::ParseVector: "1,2,3", or with non-numeric parts the "X=1 Y=2 Z=3" form.
	template <typename T>
	bool ParseVectorPart(const FString& Source, UE::Math::TVector<T>& OutValue)
	{
		double Values[3] = {};
		switch (ParseCommaSeparatedDoubles(Source, Values, 3))
		{
		case ECommaListResult::Parsed:
			OutValue = UE::Math::TVector<T>(T(Values[0]), T(Values[1]), T(Values[2]));
			return true;
		case ECommaListResult::NotNumbers:
			return OutValue.InitFromString(Source);
		case ECommaListResult::WrongShape:
		default:
			return false;
		}
	}

	// FDefaultValueHelper::ParseRotator: as a vector (pitch, yaw, roll), then "P=", then "Pitch=".
	template <typename T>
	bool ParseRotatorPart(const FString& Source, UE::Math::TRotator<T>& OutValue)
	{
		UE::Math::TVector<T> AsVector;
		if (ParseVectorPart(Source, AsVector))
		{
			OutValue = UE::Math::TRotator<T>(AsVector.X, AsVector.Y, AsVector.Z);
			return true;
		}
		if (OutValue.InitFromString(Source))
		{
			return true;
		}
		UE::Math::TRotator<T> Named = UE::Math::TRotator<T>::ZeroRotator;
		if (ParseValue(*Source, TEXT("Pitch="), Named.Pitch) && ParseValue(*Source, TEXT("Yaw="), Named.Yaw)
			&& ParseValue(*Source, TEXT("Roll="), Named.Roll))
		{
			OutValue = Named;
			return true;
		}
		return false;
	}
}

namespace UE::Math
{

template <typename T>
FString TTransform<T>::ToString() const
{
	const TRotator<T> R(Rotator());
	const TVector<T>& TT = Translation;
	const TVector<T>& S = Scale3D;
	return FString::Printf(TEXT("%f,%f,%f|%f,%f,%f|%f,%f,%f"),
		double(TT.X), double(TT.Y), double(TT.Z),
		double(R.Pitch), double(R.Yaw), double(R.Roll),
		double(S.X), double(S.Y), double(S.Z));
}

template <typename T>
FString TTransform<T>::ToHumanReadableString() const
{
	const TRotator<T> R(Rotator());
	FString Output = FString::Printf(TEXT("Rotation: Pitch %f Yaw %f Roll %f\r\n"), double(R.Pitch), double(R.Yaw), double(R.Roll));
	Output += FString::Printf(TEXT("Translation: %f %f %f\r\n"), double(Translation.X), double(Translation.Y), double(Translation.Z));
	Output += FString::Printf(TEXT("Scale3D: %f %f %f\r\n"), double(Scale3D.X), double(Scale3D.Y), double(Scale3D.Z));
	return Output;
}

template <typename T>
bool TTransform<T>::InitFromString(const FString& Source)
{
	TArray<FString> Parts;
	Source.ParseIntoArray(Parts, TEXT("|"), true);
	if (Parts.Num() != 3)
	{
		return false;
	}

	TVector<T> ParsedTranslation = TVector<T>::ZeroVector;
	TRotator<T> ParsedRotation = TRotator<T>::ZeroRotator;
	TVector<T> ParsedScale = TVector<T>::OneVector;
	if (!ParseVectorPart(Parts[0], ParsedTranslation) || !ParseRotatorPart(Parts[1], ParsedRotation)
		|| !ParseVectorPart(Parts[2], ParsedScale))
	{
		return false;
	}

	SetComponents(TQuat<T>(ParsedRotation), ParsedTranslation, ParsedScale);
	return true;
}

template struct TTransform<float>;
template struct TTransform<double>;

} // namespace UE::Math
