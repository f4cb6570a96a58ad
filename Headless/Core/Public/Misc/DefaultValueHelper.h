#pragma once

#include "CoreTypes.h"
#include "Containers/UnrealString.h"
#include "Math/MathFwd.h"

/**
 * Reads default values written as text (property defaults, pin defaults), with the engine's
 * rules. Blanks anywhere are ignored by the Parse functions. Vectors and rotators are read as
 * "1,2,3"; when the parts are not plain numbers the "X=1 Y=2 Z=3" form (InitFromString) is
 * tried instead, which, as in the engine, may leave the output partly written on failure.
 */
struct FDefaultValueHelper
{
	/** Whether Source, ignoring surrounding blanks, is exactly CompareStr (case-sensitive). */
	[[nodiscard]] static CORE_API bool Is(const FString& Source, const TCHAR* CompareStr);
	[[nodiscard]] static CORE_API FString RemoveWhitespaces(const FString& Source);
	[[nodiscard]] static CORE_API bool HasWhitespaces(const FString& Source);
	/** The part after "::" ("EMyEnum::Value" gives "Value"), or Source unchanged. */
	[[nodiscard]] static CORE_API FString GetUnqualifiedEnumValue(const FString& Source);

	/** [sign] digits, or "0x" and hex digits, or a leading 0 for octal; blanks allowed around the sign and number. */
	[[nodiscard]] static CORE_API bool IsStringValidInteger(const FString& Source);
	/** [sign] digits [. digits] [e [sign] digits] [f]; a lone "." counts, as in the engine. */
	[[nodiscard]] static CORE_API bool IsStringValidFloat(const FString& Source);
	[[nodiscard]] static CORE_API bool IsStringValidVector(const FString& Source);
	[[nodiscard]] static CORE_API bool IsStringValidRotator(const FString& Source);
	[[nodiscard]] static CORE_API bool IsStringValidLinearColor(const FString& Source);

	/** Decimal, octal (leading 0) or hex ("0x"), as the validity check decides. */
	static CORE_API bool ParseInt(const FString& Source, int32& OutVal);
	static CORE_API bool ParseInt64(const FString& Source, int64& OutVal);
	static CORE_API bool ParseFloat(const FString& Source, float& OutVal);
	static CORE_API bool ParseDouble(const FString& Source, double& OutVal);
	/** "true" or "false" in any case, or an integer (non-zero is true). */
	static CORE_API bool ParseBool(const FString& Source, bool& OutVal);

	/** "X,Y,Z" with exactly two commas, or the "X=" form when the parts are not numbers. */
	static CORE_API bool ParseVector(const FString& Source, FVector3d& OutVal);
	static CORE_API bool ParseVector(const FString& Source, FVector3f& OutVal);
	/** "X,Y", or the "X=" form when the parts are not numbers (including when there are more commas). */
	static CORE_API bool ParseVector2D(const FString& Source, FVector2d& OutVal);
	static CORE_API bool ParseVector2D(const FString& Source, FVector2f& OutVal);
	/** "P,Y,R" as a vector, then the "P=" form, then "Pitch= Yaw= Roll=". */
	static CORE_API bool ParseRotator(const FString& Source, FRotator3d& OutVal);
	static CORE_API bool ParseRotator(const FString& Source, FRotator3f& OutVal);
	/** "R,G,B" or "R,G,B,A" (alpha 1 when absent), or the "R=" form when the first three parts are not numbers. */
	static CORE_API bool ParseLinearColor(const FString& Source, FLinearColor& OutVal);
	/** As ParseLinearColor with integer parts (alpha 255 when absent). */
	static CORE_API bool ParseColor(const FString& Source, FColor& OutVal);
};
