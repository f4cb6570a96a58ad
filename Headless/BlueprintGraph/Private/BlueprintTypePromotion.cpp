#include "BlueprintTypePromotion.h"

#include "EdGraphSchema_K2.h"

namespace
{
	/** Rank on the numeric ladder; INDEX_NONE for types that do not promote. */
	int32 NumericRank(const FEdGraphPinType& Type)
	{
		if (Type.IsContainer())
		{
			return INDEX_NONE;
		}
		if (Type.PinCategory == UEdGraphSchema_K2::PC_Byte)
		{
			// Enums are bytes with a meaning; they do not widen into numbers.
			return Type.PinSubCategoryObject.Get() ? INDEX_NONE : 0;
		}
		if (Type.PinCategory == UEdGraphSchema_K2::PC_Int)
		{
			return 1;
		}
		if (Type.PinCategory == UEdGraphSchema_K2::PC_Int64)
		{
			return 2;
		}
		if (Type.PinCategory == UEdGraphSchema_K2::PC_Real)
		{
			return Type.PinSubCategory == UEdGraphSchema_K2::PC_Float ? 3 : 4;
		}
		return INDEX_NONE;
	}
}

bool FTypePromotion::IsValidPromotion(const FEdGraphPinType& A, const FEdGraphPinType& B)
{
	const int32 RankA = NumericRank(A);
	const int32 RankB = NumericRank(B);
	return RankA != INDEX_NONE && RankB != INDEX_NONE && RankA < RankB;
}

FEdGraphPinType FTypePromotion::GetHigherType(const FEdGraphPinType& A, const FEdGraphPinType& B)
{
	return IsValidPromotion(A, B) ? B : A;
}
