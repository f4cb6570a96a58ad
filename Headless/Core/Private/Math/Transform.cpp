#include "Math/Transform.h"

#include "Containers/Array.h"
#include "Misc/DefaultValueHelper.h"

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
	if (!FDefaultValueHelper::ParseVector(Parts[0], ParsedTranslation) || !FDefaultValueHelper::ParseRotator(Parts[1], ParsedRotation)
		|| !FDefaultValueHelper::ParseVector(Parts[2], ParsedScale))
	{
		return false;
	}

	SetComponents(TQuat<T>(ParsedRotation), ParsedTranslation, ParsedScale);
	return true;
}

template struct TTransform<float>;
template struct TTransform<double>;

} // namespace UE::Math
