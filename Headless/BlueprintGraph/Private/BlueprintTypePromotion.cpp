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

#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	/** The two operand types of a binary operator function, from its first two parameters. */
	bool GetOperandTypes(const UFunction* Function, FEdGraphPinType& OutA, FEdGraphPinType& OutB, FEdGraphPinType& OutResult)
	{
		const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
		int32 Found = 0;
		bool bHasResult = false;
		for (TFieldIterator<FProperty> It(Function); It && It->HasAnyPropertyFlags(CPF_Parm); ++It)
		{
			if (It->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				bHasResult = Schema->ConvertPropertyToPinType(*It, OutResult);
				continue;
			}
			if (Found < 2 && Schema->ConvertPropertyToPinType(*It, Found == 0 ? OutA : OutB))
			{
				++Found;
			}
		}
		return Found == 2 && bHasResult;
	}

	bool SameTerminalType(const FEdGraphPinType& A, const FEdGraphPinType& B)
	{
		if (A.PinCategory != B.PinCategory || A.IsContainer() || B.IsContainer())
		{
			return false;
		}
		if (A.PinCategory == UEdGraphSchema_K2::PC_Real)
		{
			return true;
		}
		return A.PinSubCategory == B.PinSubCategory && A.PinSubCategoryObject == B.PinSubCategoryObject;
	}
}

FName FTypePromotion::GetOpNameFromFunction(const UFunction* Function)
{
	if (!Function)
	{
		return NAME_None;
	}
	FString Name = Function->GetName();
	int32 Underscore = INDEX_NONE;
	if (Name.FindChar(TEXT('_'), Underscore))
	{
		Name.LeftInline(Underscore);
	}
	return FName(*Name);
}

bool FTypePromotion::IsComparisonOpName(FName OpName)
{
	static const FName Comparisons[] = { TEXT("EqualEqual"), TEXT("NotEqual"), TEXT("Greater"), TEXT("GreaterEqual"), TEXT("Less"), TEXT("LessEqual") };
	for (const FName& Comparison : Comparisons)
	{
		if (OpName == Comparison)
		{
			return true;
		}
	}
	return false;
}

bool FTypePromotion::IsComparisonFunc(const UFunction* Function)
{
	return Function && IsComparisonOpName(GetOpNameFromFunction(Function));
}

void FTypePromotion::GetAllFuncsForOp(FName OpName, TArray<UFunction*>& OutFuncs)
{
	const UClass* Library = FindObject<UClass>(nullptr, TEXT("/Script/Engine.KismetMathLibrary"));
	if (!Library || OpName.IsNone())
	{
		return;
	}
	// The library's functions are fixed once the catalogue is loaded: each operator's list is gathered once.
	static TMap<FName, TArray<UFunction*>> FunctionsByOp;
	static const UClass* CachedLibrary = nullptr;
	if (CachedLibrary != Library)
	{
		FunctionsByOp.Reset();
		CachedLibrary = Library;
		for (TFieldIterator<UFunction> It(Library); It; ++It)
		{
			FEdGraphPinType A, B, Result;
			if (GetOperandTypes(*It, A, B, Result) && SameTerminalType(A, B))
			{
				FunctionsByOp.FindOrAdd(GetOpNameFromFunction(*It)).Add(*It);
			}
		}
	}
	if (const TArray<UFunction*>* Found = FunctionsByOp.Find(OpName))
	{
		OutFuncs.Append(*Found);
	}
}

UFunction* FTypePromotion::FindBestMatchingFunc(FName OpName, const TArray<FEdGraphPinType>& OperandTypes)
{
	TArray<UFunction*> Candidates;
	GetAllFuncsForOp(OpName, Candidates);
	if (Candidates.Num() == 0)
	{
		return nullptr;
	}
	// The widest operand decides; the others must be that type or promote into it.
	TArray<FEdGraphPinType> Typed;
	for (const FEdGraphPinType& Type : OperandTypes)
	{
		if (Type.PinCategory != UEdGraphSchema_K2::PC_Wildcard && !Type.PinCategory.IsNone())
		{
			Typed.Add(Type);
		}
	}
	if (Typed.Num() == 0)
	{
		return nullptr;
	}
	FEdGraphPinType Highest = Typed[0];
	for (const FEdGraphPinType& Type : Typed)
	{
		Highest = GetHigherType(Highest, Type);
	}
	for (const FEdGraphPinType& Type : Typed)
	{
		if (!SameTerminalType(Type, Highest) && !IsValidPromotion(Type, Highest))
		{
			return nullptr;
		}
	}
	for (UFunction* Candidate : Candidates)
	{
		FEdGraphPinType A, B, Result;
		GetOperandTypes(Candidate, A, B, Result);
		if (SameTerminalType(A, Highest))
		{
			return Candidate;
		}
	}
	return nullptr;
}
