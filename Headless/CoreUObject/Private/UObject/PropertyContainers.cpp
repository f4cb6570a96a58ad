#include "UObject/UnrealType.h"
#include "UObject/Class.h"
#include "PropertyHelper.h"
#include "ObjectRegistry.h"

#include <cstring>

using namespace UE::CoreUObject::Private;

IMPLEMENT_FIELD(FArrayProperty)
IMPLEMENT_FIELD(FSetProperty)
IMPLEMENT_FIELD(FMapProperty)

/** The container code's access to the untyped storage. */
struct FScriptContainerAccess
{
	static void*& Data(FScriptArray& Array) { return Array.Data; }
	static int32& Num(FScriptArray& Array) { return Array.ArrayNum; }
	static int32& Max(FScriptArray& Array) { return Array.ArrayMax; }
	static FScriptArray& Elements(FScriptSet& Set) { return Set.Elements; }
	static FScriptArray& Pairs(FScriptMap& Map) { return Map.Pairs.Elements; }
};

namespace
{
	/**
	 * How to handle one slot of a container's storage: an array element, a set element, or a map pair.
	 * Slots are never moved as raw bytes unless the type allows it, since strings and the like hold
	 * pointers into themselves.
	 */
	class FSlotOps
	{
	public:
		virtual ~FSlotOps() = default;
		virtual void Initialize(uint8* Slot) const = 0;
		virtual void Copy(uint8* Dest, const uint8* Src) const = 0;
		virtual void Destroy(uint8* Slot) const = 0;
		virtual bool IsPlainOldData() const = 0;
		int32 SlotSize = 0;
	};

	class FPropertySlotOps : public FSlotOps
	{
	public:
		explicit FPropertySlotOps(const FProperty* InProperty) : Property(InProperty) { SlotSize = InProperty->GetElementSize(); }
		virtual void Initialize(uint8* Slot) const override
		{
			std::memset(Slot, 0, (SIZE_T)SlotSize);
			Property->InitializeValue(Slot);
		}
		virtual void Copy(uint8* Dest, const uint8* Src) const override { Property->CopySingleValue(Dest, Src); }
		virtual void Destroy(uint8* Slot) const override { Property->DestroyValue(Slot); }
		virtual bool IsPlainOldData() const override { return Property->HasAnyPropertyFlags(CPF_IsPlainOldData); }

	private:
		const FProperty* Property;
	};

	class FPairSlotOps : public FSlotOps
	{
	public:
		FPairSlotOps(const FProperty* InKey, const FProperty* InValue, const FScriptMapLayout& InLayout)
			: Key(InKey), Value(InValue), ValueOffset(InLayout.ValueOffset)
		{
			SlotSize = InLayout.SetLayout.Size;
		}
		virtual void Initialize(uint8* Slot) const override
		{
			std::memset(Slot, 0, (SIZE_T)SlotSize);
			Key->InitializeValue(Slot);
			Value->InitializeValue(Slot + ValueOffset);
		}
		virtual void Copy(uint8* Dest, const uint8* Src) const override
		{
			Key->CopySingleValue(Dest, Src);
			Value->CopySingleValue(Dest + ValueOffset, Src + ValueOffset);
		}
		virtual void Destroy(uint8* Slot) const override
		{
			Key->DestroyValue(Slot);
			Value->DestroyValue(Slot + ValueOffset);
		}
		virtual bool IsPlainOldData() const override
		{
			return Key->HasAnyPropertyFlags(CPF_IsPlainOldData) && Value->HasAnyPropertyFlags(CPF_IsPlainOldData);
		}

	private:
		const FProperty* Key;
		const FProperty* Value;
		int32 ValueOffset;
	};

	uint8* SlotAt(FScriptArray& Array, const FSlotOps& Ops, int32 Index)
	{
		return (uint8*)FScriptContainerAccess::Data(Array) + (SIZE_T)Index * Ops.SlotSize;
	}

	/** Moves the slots to a block of NewMax slots, with the same ::operator new as TArray so native arrays can be driven alike. */
	void ReallocateSlots(FScriptArray& Array, const FSlotOps& Ops, int32 NewMax)
	{
		int32& Num = FScriptContainerAccess::Num(Array);
		void*& Data = FScriptContainerAccess::Data(Array);
		check(NewMax >= Num);
		uint8* NewData = NewMax > 0 ? (uint8*)::operator new((SIZE_T)NewMax * Ops.SlotSize) : nullptr;
		if (Num > 0)
		{
			if (Ops.IsPlainOldData())
			{
				std::memcpy(NewData, Data, (SIZE_T)Num * Ops.SlotSize);
			}
			else
			{
				for (int32 Index = 0; Index < Num; ++Index)
				{
					uint8* NewSlot = NewData + (SIZE_T)Index * Ops.SlotSize;
					uint8* OldSlot = SlotAt(Array, Ops, Index);
					Ops.Initialize(NewSlot);
					Ops.Copy(NewSlot, OldSlot);
					Ops.Destroy(OldSlot);
				}
			}
		}
		::operator delete(Data);
		Data = NewData;
		FScriptContainerAccess::Max(Array) = NewMax;
	}

	void EnsureSlotCapacity(FScriptArray& Array, const FSlotOps& Ops, int32 Required)
	{
		const int32 Max = FScriptContainerAccess::Max(Array);
		if (Required > Max)
		{
			// The same geometric growth as TArray.
			const int32 Grown = Max + Max / 2 + 4;
			ReallocateSlots(Array, Ops, Required > Grown ? Required : Grown);
		}
	}

	int32 AddSlots(FScriptArray& Array, const FSlotOps& Ops, int32 Count)
	{
		check(Count >= 0);
		int32& Num = FScriptContainerAccess::Num(Array);
		const int32 First = Num;
		EnsureSlotCapacity(Array, Ops, Num + Count);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Ops.Initialize(SlotAt(Array, Ops, Num));
			++Num;
		}
		return First;
	}

	void RemoveSlots(FScriptArray& Array, const FSlotOps& Ops, int32 Index, int32 Count)
	{
		int32& Num = FScriptContainerAccess::Num(Array);
		checkf(Count >= 0 && Index >= 0 && Index + Count <= Num, TEXT("Removing %d elements at %d from a container of %d"), Count, Index, Num);
		if (Count == 0)
		{
			return;
		}
		if (Ops.IsPlainOldData())
		{
			std::memmove(SlotAt(Array, Ops, Index), SlotAt(Array, Ops, Index + Count), (SIZE_T)(Num - Index - Count) * Ops.SlotSize);
		}
		else
		{
			for (int32 Slot = Index; Slot + Count < Num; ++Slot)
			{
				Ops.Copy(SlotAt(Array, Ops, Slot), SlotAt(Array, Ops, Slot + Count));
			}
			for (int32 Slot = Num - Count; Slot < Num; ++Slot)
			{
				Ops.Destroy(SlotAt(Array, Ops, Slot));
			}
		}
		Num -= Count;
	}

	void EmptySlots(FScriptArray& Array, const FSlotOps& Ops, int32 Slack)
	{
		int32& Num = FScriptContainerAccess::Num(Array);
		if (!Ops.IsPlainOldData())
		{
			for (int32 Index = 0; Index < Num; ++Index)
			{
				Ops.Destroy(SlotAt(Array, Ops, Index));
			}
		}
		Num = 0;
		if (FScriptContainerAccess::Max(Array) != Slack)
		{
			ReallocateSlots(Array, Ops, Slack);
		}
	}

	/** A freshly initialised value of Property, for comparing struct elements against their defaults. */
	class FTemporaryValue
	{
	public:
		explicit FTemporaryValue(const FProperty* InProperty) : Property(InProperty)
		{
			Memory = (uint8*)AllocateObjectMemory((SIZE_T)FMath::Max(1, InProperty->GetSize()), ObjectAlignment);
			Property->InitializeValue(Memory);
		}
		~FTemporaryValue()
		{
			Property->DestroyValue(Memory);
			FreeObjectMemory(Memory, ObjectAlignment);
		}
		uint8* Get() const { return Memory; }

	private:
		const FProperty* Property;
		uint8* Memory;
	};

	void SetContainerFlags(EPropertyFlags& Flags)
	{
		// An all-zero container is a valid empty one, but it owns memory that must be freed.
		Flags &= ~(CPF_IsPlainOldData | CPF_NoDestructor);
		Flags |= CPF_ZeroConstructor;
	}
}

// Layouts

FScriptSetLayout FScriptSet::GetScriptLayout(int32 ElementSize, int32 ElementAlignment)
{
	FScriptSetLayout Layout;
	Layout.Alignment = FMath::Max(1, ElementAlignment);
	Layout.Size = FMath::Max(1, (ElementSize + Layout.Alignment - 1) / Layout.Alignment * Layout.Alignment);
	return Layout;
}

FScriptMapLayout FScriptMap::GetScriptLayout(int32 KeySize, int32 KeyAlignment, int32 ValueSize, int32 ValueAlignment)
{
	FScriptMapLayout Layout;
	const int32 ValueAlign = FMath::Max(1, ValueAlignment);
	Layout.ValueOffset = (KeySize + ValueAlign - 1) / ValueAlign * ValueAlign;
	Layout.SetLayout = FScriptSet::GetScriptLayout(Layout.ValueOffset + ValueSize, FMath::Max(KeyAlignment, ValueAlign));
	return Layout;
}

// FScriptArrayHelper

FScriptArrayHelper::FScriptArrayHelper(const FArrayProperty* InProperty, const void* InArray)
	: Inner(InProperty->Inner), Array((FScriptArray*)InArray), ElementSize(InProperty->Inner ? InProperty->Inner->GetElementSize() : 0)
{
	checkf(Inner, TEXT("Array property %s has no inner property"), *InProperty->GetFullName());
}

uint8* FScriptArrayHelper::GetRawPtr(int32 Index)
{
	if (Num() == 0 && Index == 0)
	{
		return (uint8*)Array->Data;
	}
	checkf(IsValidIndex(Index), TEXT("Array index %d out of bounds (%d elements)"), Index, Num());
	return (uint8*)Array->Data + (SIZE_T)Index * ElementSize;
}

void FScriptArrayHelper::Reallocate(int32 NewMax)
{
	ReallocateSlots(*Array, FPropertySlotOps(Inner), NewMax);
}

int32 FScriptArrayHelper::AddValues(int32 Count)
{
	return AddSlots(*Array, FPropertySlotOps(Inner), Count);
}

void FScriptArrayHelper::InsertValues(int32 Index, int32 Count)
{
	checkf(Index >= 0 && Index <= Num() && Count >= 0, TEXT("Inserting %d elements at %d into an array of %d"), Count, Index, Num());
	const FPropertySlotOps Ops(Inner);
	AddSlots(*Array, Ops, Count);
	// Shift the tail up by copying from the end, then reset the opened slots.
	for (int32 Slot = Num() - 1; Slot >= Index + Count; --Slot)
	{
		Ops.Copy(SlotAt(*Array, Ops, Slot), SlotAt(*Array, Ops, Slot - Count));
	}
	for (int32 Slot = Index; Slot < Index + Count; ++Slot)
	{
		uint8* Element = SlotAt(*Array, Ops, Slot);
		Ops.Destroy(Element);
		Ops.Initialize(Element);
	}
}

void FScriptArrayHelper::RemoveValues(int32 Index, int32 Count)
{
	RemoveSlots(*Array, FPropertySlotOps(Inner), Index, Count);
}

void FScriptArrayHelper::EmptyValues(int32 Slack)
{
	EmptySlots(*Array, FPropertySlotOps(Inner), Slack);
}

void FScriptArrayHelper::EmptyAndAddValues(int32 Count)
{
	EmptyValues(Count);
	AddValues(Count);
}

void FScriptArrayHelper::Resize(int32 NewNum)
{
	check(NewNum >= 0);
	if (NewNum > Num())
	{
		AddValues(NewNum - Num());
	}
	else if (NewNum < Num())
	{
		RemoveValues(NewNum, Num() - NewNum);
	}
}

void FScriptArrayHelper::Reserve(int32 Capacity)
{
	if (Capacity > Array->ArrayMax)
	{
		Reallocate(Capacity);
	}
}

void FScriptArrayHelper::MoveAssign(void* OtherArray)
{
	FScriptArray* Other = (FScriptArray*)OtherArray;
	if (Other == Array)
	{
		return;
	}
	EmptyValues();
	Array->Data = Other->Data;
	Array->ArrayNum = Other->ArrayNum;
	Array->ArrayMax = Other->ArrayMax;
	Other->Data = nullptr;
	Other->ArrayNum = 0;
	Other->ArrayMax = 0;
}

void FScriptArrayHelper::SwapValues(int32 A, int32 B)
{
	checkf(IsValidIndex(A) && IsValidIndex(B), TEXT("Swapping elements %d and %d of an array of %d"), A, B, Num());
	if (A == B)
	{
		return;
	}
	FTemporaryValue Temp(Inner);
	Inner->CopySingleValue(Temp.Get(), GetRawPtr(A));
	Inner->CopySingleValue(GetRawPtr(A), GetRawPtr(B));
	Inner->CopySingleValue(GetRawPtr(B), Temp.Get());
}

// FArrayProperty

FArrayProperty::FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty(InOwner, InName, InObjectFlags)
{
	SetContainerFlags(PropertyFlags);
}

FArrayProperty::FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags,
	EArrayPropertyFlags InArrayPropertyFlags)
	: TProperty(InOwner, InName, InObjectFlags, InOffset, InFlags)
{
	SetContainerFlags(PropertyFlags);
}

FArrayProperty::~FArrayProperty()
{
	delete Inner;
}

void FArrayProperty::AddCppProperty(FProperty* Property)
{
	checkf(!Inner, TEXT("Array property %s already has an inner property"), *GetFullName());
	checkf(Property, TEXT("Array property %s: null inner property"), *GetFullName());
	Inner = Property;
}

void FArrayProperty::LinkInternal()
{
	if (!Inner)
	{
		LogError(FString::Printf(TEXT("Array property %s has no inner property"), *GetFullName()));
		return;
	}
	Inner->LinkInternal();
	Inner->SetOffset_Internal(0);
	if (Inner->HasAnyPropertyFlags(CPF_HasGetValueTypeHash))
	{
		PropertyFlags |= CPF_HasGetValueTypeHash;
	}
	else
	{
		PropertyFlags &= ~CPF_HasGetValueTypeHash;
	}
}

bool FArrayProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptArrayHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptArrayHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		if (!Inner->Identical(HelperA.GetRawPtr(Index), HelperB.GetRawPtr(Index), PortFlags))
		{
			return false;
		}
	}
	return true;
}

void FArrayProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	if (PortFlags & PPF_ExportCpp)
	{
		FString Extended;
		const FString Type = GetCPPType(&Extended);
		ValueStr += FString::Printf(TEXT("%s%s()"), *Type, *Extended);
		return;
	}
	FScriptArrayHelper Helper(this, PointerToValuePtr(PropertyValueOrContainer, PointerType));
	const bool bReadableForm = (PortFlags & PPF_BlueprintDebugView) != 0;
	const bool bExternalEditor = (PortFlags & PPF_ExternalEditor) != 0;
	// Struct elements always compare with a fresh struct, mirroring how imported elements start.
	TUniquePtr<FTemporaryValue> StructDefaults;
	if (CastField<FStructProperty>(Inner) && !bExternalEditor)
	{
		StructDefaults = MakeUnique<FTemporaryValue>(Inner);
	}
	int32 DefaultNum = 0;
	const uint8* DefaultData = nullptr;
	if (DefaultValue)
	{
		FScriptArrayHelper DefaultHelper(this, DefaultValue);
		DefaultNum = DefaultHelper.Num();
		DefaultData = DefaultHelper.GetRawPtr(0);
	}
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (!bReadableForm)
		{
			ValueStr += Index == 0 ? TEXT('(') : TEXT(',');
		}
		else
		{
			if (Index > 0)
			{
				ValueStr += TEXT('\n');
			}
			ValueStr += FString::Printf(TEXT("[%i] "), Index);
		}
		const uint8* Element = Helper.GetRawPtr(Index);
		const uint8* ElementDefault = nullptr;
		if (bExternalEditor)
		{
			ElementDefault = Element;
		}
		else if (StructDefaults)
		{
			ElementDefault = StructDefaults->Get();
		}
		else if (DefaultData && Index < DefaultNum)
		{
			ElementDefault = DefaultData + (SIZE_T)Index * Inner->GetElementSize();
		}
		Inner->ExportTextItem_Direct(ValueStr, Element, ElementDefault, Parent, PortFlags | PPF_Delimited, ExportRootScope);
	}
	if (Helper.Num() > 0 && !bReadableForm)
	{
		ValueStr += TEXT(")");
	}
}

const TCHAR* FArrayProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FScriptArrayHelper Helper(this, PointerToValuePtr(ContainerOrPropertyPtr, PointerType));
	// An empty array exports as nothing, so nothing imports as an empty array.
	if (*Buffer == 0 || *Buffer == TEXT(')') || *Buffer == TEXT(','))
	{
		Helper.EmptyValues();
		return Buffer;
	}
	if (*Buffer++ != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: an array value starts with '('"), *GetName()));
		return nullptr;
	}
	Helper.EmptyValues();
	SkipWhitespace(Buffer);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	Helper.AddValue();
	int32 Index = 0;
	while (*Buffer != TEXT(')'))
	{
		SkipWhitespace(Buffer);
		if (*Buffer != TEXT(','))
		{
			Buffer = Inner->ImportText_Direct(Buffer, Helper.GetRawPtr(Index), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
			if (!Buffer)
			{
				Helper.EmptyValues();
				return nullptr;
			}
			SkipWhitespace(Buffer);
		}
		if (*Buffer == TEXT(','))
		{
			++Buffer;
			++Index;
			Helper.AddValue();
		}
		else
		{
			break;
		}
	}
	if (*Buffer++ != TEXT(')'))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: an array value ends with ')'"), *GetName()));
		Helper.EmptyValues();
		return nullptr;
	}
	return Buffer;
}

FString FArrayProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (ExtendedTypeText && Inner)
	{
		FString InnerExtended;
		FString InnerType = Inner->GetCPPType(&InnerExtended, CPPExportFlags & ~CPPF_ArgumentOrReturnValue);
		*ExtendedTypeText = FString::Printf(TEXT("<%s%s>"), *InnerType, *InnerExtended);
	}
	return TEXT("TArray");
}

FString FArrayProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = Inner ? Inner->GetCPPType() : FString();
	return TEXT("TARRAY");
}

bool FArrayProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && Inner && Inner->SameType(((const FArrayProperty*)Other)->Inner);
}

void FArrayProperty::InitializeValueInternal(void* Dest) const
{
	std::memset(Dest, 0, (SIZE_T)GetSize());
}

void FArrayProperty::DestroyValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < GetArrayDim(); ++Index)
	{
		FScriptArrayHelper Helper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize());
		Helper.EmptyValues();
	}
}

void FArrayProperty::ClearValueInternal(void* Data) const
{
	FScriptArrayHelper(this, Data).EmptyValues();
}

void FArrayProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		FScriptArrayHelper SrcHelper(this, (const uint8*)Src + (SIZE_T)Index * GetElementSize());
		FScriptArrayHelper DestHelper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize());
		const int32 Num = SrcHelper.Num();
		DestHelper.EmptyAndAddValues(Num);
		for (int32 Element = 0; Element < Num; ++Element)
		{
			Inner->CopySingleValue(DestHelper.GetRawPtr(Element), SrcHelper.GetRawPtr(Element));
		}
	}
}

uint32 FArrayProperty::GetValueTypeHashInternal(const void* Src) const
{
	FScriptArrayHelper Helper(this, Src);
	uint32 Hash = 0;
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		Hash = HashCombine(Hash, Inner->GetValueTypeHash(Helper.GetRawPtr(Index)));
	}
	return Hash;
}

// FScriptSetHelper

FScriptSetHelper::FScriptSetHelper(const FSetProperty* InProperty, const void* InSet)
	: SetProperty(InProperty), ElementProp(InProperty->ElementProp), Set((FScriptSet*)InSet)
{
	checkf(ElementProp, TEXT("Set property %s has no element property"), *InProperty->GetFullName());
}

namespace
{
	class FSetSlotOps : public FPropertySlotOps
	{
	public:
		FSetSlotOps(const FProperty* InElement, const FScriptSetLayout& Layout) : FPropertySlotOps(InElement) { SlotSize = Layout.Size; }
	};
}

int32 FScriptSetHelper::Num() const
{
	return FScriptContainerAccess::Num(FScriptContainerAccess::Elements(*Set));
}

uint8* FScriptSetHelper::GetElementPtr(int32 Index)
{
	checkf(IsValidIndex(Index) || (Index == 0 && Num() == 0), TEXT("Set index %d out of bounds (%d elements)"), Index, Num());
	FScriptArray& Elements = FScriptContainerAccess::Elements(*Set);
	return (uint8*)FScriptContainerAccess::Data(Elements) + (SIZE_T)Index * SetProperty->SetLayout.Size;
}

int32 FScriptSetHelper::FindElementIndex(const void* ElementToFind) const
{
	for (int32 Index = 0; Index < Num(); ++Index)
	{
		if (ElementProp->Identical(GetElementPtr(Index), ElementToFind, 0))
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

int32 FScriptSetHelper::AddElement(const void* ElementToAdd)
{
	const int32 Existing = FindElementIndex(ElementToAdd);
	if (Existing != INDEX_NONE)
	{
		return Existing;
	}
	const int32 Index = AddDefaultValue_Invalid_NeedsRehash();
	ElementProp->CopySingleValue(GetElementPtr(Index), ElementToAdd);
	return Index;
}

int32 FScriptSetHelper::AddDefaultValue_Invalid_NeedsRehash()
{
	return AddSlots(FScriptContainerAccess::Elements(*Set), FSetSlotOps(ElementProp, SetProperty->SetLayout), 1);
}

bool FScriptSetHelper::RemoveElement(const void* ElementToRemove)
{
	const int32 Index = FindElementIndex(ElementToRemove);
	if (Index == INDEX_NONE)
	{
		return false;
	}
	RemoveAt(Index);
	return true;
}

void FScriptSetHelper::RemoveAt(int32 Index, int32 Count)
{
	RemoveSlots(FScriptContainerAccess::Elements(*Set), FSetSlotOps(ElementProp, SetProperty->SetLayout), Index, Count);
}

void FScriptSetHelper::EmptyElements(int32 Slack)
{
	EmptySlots(FScriptContainerAccess::Elements(*Set), FSetSlotOps(ElementProp, SetProperty->SetLayout), Slack);
}

// FSetProperty

FSetProperty::FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty(InOwner, InName, InObjectFlags)
{
	SetContainerFlags(PropertyFlags);
}

FSetProperty::FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags)
	: TProperty(InOwner, InName, InObjectFlags, InOffset, InFlags)
{
	SetContainerFlags(PropertyFlags);
}

FSetProperty::~FSetProperty()
{
	delete ElementProp;
}

void FSetProperty::AddCppProperty(FProperty* Property)
{
	checkf(!ElementProp, TEXT("Set property %s already has an element property"), *GetFullName());
	checkf(Property, TEXT("Set property %s: null element property"), *GetFullName());
	ElementProp = Property;
}

void FSetProperty::LinkInternal()
{
	if (!ElementProp)
	{
		LogError(FString::Printf(TEXT("Set property %s has no element property"), *GetFullName()));
		return;
	}
	ElementProp->LinkInternal();
	ElementProp->SetOffset_Internal(0);
	SetLayout = FScriptSet::GetScriptLayout(ElementProp->GetSize(), ElementProp->GetMinAlignment());
}

bool FSetProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptSetHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptSetHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		if (HelperB.FindElementIndex(HelperA.GetElementPtr(Index)) == INDEX_NONE)
		{
			return false;
		}
	}
	return true;
}

void FSetProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	FScriptSetHelper Helper(this, PointerToValuePtr(PropertyValueOrContainer, PointerType));
	if (Helper.Num() == 0)
	{
		ValueStr += TEXT("()");
		return;
	}
	const bool bExternalEditor = (PortFlags & PPF_ExternalEditor) != 0;
	TUniquePtr<FTemporaryValue> StructDefaults;
	if (CastField<FStructProperty>(ElementProp) && !bExternalEditor)
	{
		StructDefaults = MakeUnique<FTemporaryValue>(ElementProp);
	}
	if (PortFlags & PPF_BlueprintDebugView)
	{
		for (int32 Index = 0; Index < Helper.Num(); ++Index)
		{
			if (Index > 0)
			{
				ValueStr += TEXT('\n');
			}
			ValueStr += FString::Printf(TEXT("[%i] "), Index);
			const uint8* Element = Helper.GetElementPtr(Index);
			ElementProp->ExportTextItem_Direct(ValueStr, Element, bExternalEditor ? Element : (StructDefaults ? StructDefaults->Get() : nullptr), Parent,
				PortFlags | PPF_Delimited, ExportRootScope);
		}
		return;
	}
	ValueStr += TEXT("(");
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (Index > 0)
		{
			ValueStr += TEXT(",");
		}
		const uint8* Element = Helper.GetElementPtr(Index);
		ElementProp->ExportTextItem_Direct(ValueStr, Element, bExternalEditor ? Element : (StructDefaults ? StructDefaults->Get() : nullptr), Parent,
			PortFlags | PPF_Delimited, ExportRootScope);
	}
	ValueStr += TEXT(")");
}

const TCHAR* FSetProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FScriptSetHelper Helper(this, PointerToValuePtr(ContainerOrPropertyPtr, PointerType));
	Helper.EmptyElements();
	if (*Buffer++ != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: a set value starts with '('"), *GetName()));
		return nullptr;
	}
	SkipWhitespace(Buffer);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	FTemporaryValue Element(ElementProp);
	for (;;)
	{
		ElementProp->ClearValue(Element.Get());
		Buffer = ElementProp->ImportText_Direct(Buffer, Element.Get(), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			Helper.EmptyElements();
			return nullptr;
		}
		// A repeated element is kept once.
		Helper.AddElement(Element.Get());
		SkipWhitespace(Buffer);
		const TCHAR Next = *Buffer++;
		if (Next == TEXT(')'))
		{
			return Buffer;
		}
		if (Next != TEXT(','))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("%s: expected ',' or ')' in a set value"), *GetName()));
			Helper.EmptyElements();
			return nullptr;
		}
		SkipWhitespace(Buffer);
	}
}

FString FSetProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (ExtendedTypeText && ElementProp)
	{
		FString ElementExtended;
		const FString ElementType = ElementProp->GetCPPType(&ElementExtended, CPPExportFlags & ~CPPF_ArgumentOrReturnValue);
		*ExtendedTypeText = FString::Printf(TEXT("<%s%s>"), *ElementType, *ElementExtended);
	}
	return TEXT("TSet");
}

FString FSetProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = ElementProp ? ElementProp->GetCPPType() : FString();
	return TEXT("TSET");
}

bool FSetProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && ElementProp && ElementProp->SameType(((const FSetProperty*)Other)->ElementProp);
}

void FSetProperty::InitializeValueInternal(void* Dest) const
{
	std::memset(Dest, 0, (SIZE_T)GetSize());
}

void FSetProperty::DestroyValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < GetArrayDim(); ++Index)
	{
		FScriptSetHelper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize()).EmptyElements();
	}
}

void FSetProperty::ClearValueInternal(void* Data) const
{
	FScriptSetHelper(this, Data).EmptyElements();
}

void FSetProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		FScriptSetHelper SrcHelper(this, (const uint8*)Src + (SIZE_T)Index * GetElementSize());
		FScriptSetHelper DestHelper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize());
		DestHelper.EmptyElements(SrcHelper.Num());
		for (int32 Element = 0; Element < SrcHelper.Num(); ++Element)
		{
			const int32 NewIndex = DestHelper.AddDefaultValue_Invalid_NeedsRehash();
			ElementProp->CopySingleValue(DestHelper.GetElementPtr(NewIndex), SrcHelper.GetElementPtr(Element));
		}
	}
}

// FScriptMapHelper

FScriptMapHelper::FScriptMapHelper(const FMapProperty* InProperty, const void* InMap)
	: MapLayout(InProperty->MapLayout), MapProperty(InProperty), KeyProp(InProperty->KeyProp), ValueProp(InProperty->ValueProp), Map((FScriptMap*)InMap)
{
	checkf(KeyProp && ValueProp, TEXT("Map property %s lacks its key or value property"), *InProperty->GetFullName());
}

int32 FScriptMapHelper::Num() const
{
	return FScriptContainerAccess::Num(FScriptContainerAccess::Pairs(*Map));
}

uint8* FScriptMapHelper::GetPairPtr(int32 Index)
{
	checkf(IsValidIndex(Index) || (Index == 0 && Num() == 0), TEXT("Map index %d out of bounds (%d pairs)"), Index, Num());
	FScriptArray& Pairs = FScriptContainerAccess::Pairs(*Map);
	return (uint8*)FScriptContainerAccess::Data(Pairs) + (SIZE_T)Index * MapLayout.SetLayout.Size;
}

int32 FScriptMapHelper::FindMapIndexWithKey(const void* KeyPtr) const
{
	for (int32 Index = 0; Index < Num(); ++Index)
	{
		if (KeyProp->Identical(GetKeyPtr(Index), KeyPtr, 0))
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

uint8* FScriptMapHelper::FindValueFromHash(const void* KeyPtr)
{
	const int32 Index = FindMapIndexWithKey(KeyPtr);
	return Index == INDEX_NONE ? nullptr : GetValuePtr(Index);
}

void FScriptMapHelper::AddPair(const void* KeyPtr, const void* ValuePtr)
{
	int32 Index = FindMapIndexWithKey(KeyPtr);
	if (Index == INDEX_NONE)
	{
		Index = AddDefaultValue_Invalid_NeedsRehash();
		KeyProp->CopySingleValue(GetKeyPtr(Index), KeyPtr);
	}
	ValueProp->CopySingleValue(GetValuePtr(Index), ValuePtr);
}

int32 FScriptMapHelper::AddDefaultValue_Invalid_NeedsRehash()
{
	return AddSlots(FScriptContainerAccess::Pairs(*Map), FPairSlotOps(KeyProp, ValueProp, MapLayout), 1);
}

bool FScriptMapHelper::RemovePair(const void* KeyPtr)
{
	const int32 Index = FindMapIndexWithKey(KeyPtr);
	if (Index == INDEX_NONE)
	{
		return false;
	}
	RemoveAt(Index);
	return true;
}

void FScriptMapHelper::RemoveAt(int32 Index, int32 Count)
{
	RemoveSlots(FScriptContainerAccess::Pairs(*Map), FPairSlotOps(KeyProp, ValueProp, MapLayout), Index, Count);
}

void FScriptMapHelper::EmptyValues(int32 Slack)
{
	EmptySlots(FScriptContainerAccess::Pairs(*Map), FPairSlotOps(KeyProp, ValueProp, MapLayout), Slack);
}

// FMapProperty

FMapProperty::FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty(InOwner, InName, InObjectFlags)
{
	SetContainerFlags(PropertyFlags);
}

FMapProperty::FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags, EMapPropertyFlags InMapFlags)
	: TProperty(InOwner, InName, InObjectFlags, InOffset, InFlags)
{
	SetContainerFlags(PropertyFlags);
}

FMapProperty::~FMapProperty()
{
	delete KeyProp;
	delete ValueProp;
}

void FMapProperty::AddCppProperty(FProperty* Property)
{
	checkf(Property, TEXT("Map property %s: null key or value property"), *GetFullName());
	if (!KeyProp)
	{
		KeyProp = Property;
	}
	else
	{
		checkf(!ValueProp, TEXT("Map property %s already has its key and value properties"), *GetFullName());
		ValueProp = Property;
	}
}

void FMapProperty::LinkInternal()
{
	if (!KeyProp || !ValueProp)
	{
		LogError(FString::Printf(TEXT("Map property %s lacks its key or value property"), *GetFullName()));
		return;
	}
	KeyProp->LinkInternal();
	ValueProp->LinkInternal();
	MapLayout = FScriptMap::GetScriptLayout(KeyProp->GetSize(), KeyProp->GetMinAlignment(), ValueProp->GetSize(), ValueProp->GetMinAlignment());
	// Key and value sit in one pair slot, so their offsets are relative to the slot.
	KeyProp->SetOffset_Internal(0);
	ValueProp->SetOffset_Internal(MapLayout.ValueOffset);
}

bool FMapProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptMapHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptMapHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		const int32 Other = HelperB.FindMapIndexWithKey(HelperA.GetKeyPtr(Index));
		if (Other == INDEX_NONE || !ValueProp->Identical(HelperA.GetValuePtr(Index), HelperB.GetValuePtr(Other), PortFlags))
		{
			return false;
		}
	}
	return true;
}

void FMapProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValueOrContainer, EPropertyPointerType PointerType, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	FScriptMapHelper Helper(this, PointerToValuePtr(PropertyValueOrContainer, PointerType));
	if (Helper.Num() == 0)
	{
		ValueStr += TEXT("()");
		return;
	}
	const bool bExternalEditor = (PortFlags & PPF_ExternalEditor) != 0;
	TUniquePtr<FTemporaryValue> StructDefaults;
	if (CastField<FStructProperty>(ValueProp) && !bExternalEditor)
	{
		StructDefaults = MakeUnique<FTemporaryValue>(ValueProp);
	}
	TUniquePtr<FScriptMapHelper> DefaultHelper;
	if (DefaultValue)
	{
		DefaultHelper = MakeUnique<FScriptMapHelper>(this, DefaultValue);
	}
	auto ValueDefault = [&](int32 Index) -> const uint8* {
		if (bExternalEditor)
		{
			return Helper.GetValuePtr(Index);
		}
		if (StructDefaults)
		{
			return StructDefaults->Get();
		}
		if (DefaultHelper)
		{
			const int32 DefaultIndex = DefaultHelper->FindMapIndexWithKey(Helper.GetKeyPtr(Index));
			return DefaultIndex == INDEX_NONE ? nullptr : DefaultHelper->GetValuePtr(DefaultIndex);
		}
		return nullptr;
	};
	if (PortFlags & PPF_BlueprintDebugView)
	{
		for (int32 Index = 0; Index < Helper.Num(); ++Index)
		{
			if (Index > 0)
			{
				ValueStr += TEXT('\n');
			}
			ValueStr += TEXT("[");
			KeyProp->ExportTextItem_Direct(ValueStr, Helper.GetKeyPtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
			ValueStr += TEXT("] ");
			ValueProp->ExportTextItem_Direct(ValueStr, Helper.GetValuePtr(Index), ValueDefault(Index), Parent, PortFlags | PPF_Delimited, ExportRootScope);
		}
		return;
	}
	ValueStr += TEXT("(");
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (Index > 0)
		{
			ValueStr += TEXT(",");
		}
		ValueStr += TEXT("(");
		KeyProp->ExportTextItem_Direct(ValueStr, Helper.GetKeyPtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
		ValueStr += TEXT(", ");
		ValueProp->ExportTextItem_Direct(ValueStr, Helper.GetValuePtr(Index), ValueDefault(Index), Parent, PortFlags | PPF_Delimited, ExportRootScope);
		ValueStr += TEXT(")");
	}
	ValueStr += TEXT(")");
}

const TCHAR* FMapProperty::ImportText_Internal(const TCHAR* Buffer, void* ContainerOrPropertyPtr, EPropertyPointerType PointerType, UObject* OwnerObject,
	int32 PortFlags, FOutputDevice* ErrorText) const
{
	FScriptMapHelper Helper(this, PointerToValuePtr(ContainerOrPropertyPtr, PointerType));
	Helper.EmptyValues();
	if (*Buffer++ != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: a map value starts with '('"), *GetName()));
		return nullptr;
	}
	SkipWhitespace(Buffer);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	FTemporaryValue Key(KeyProp);
	FTemporaryValue Value(ValueProp);
	auto Fail = [&](const TCHAR* Reason) -> const TCHAR* {
		ReportImportError(ErrorText, FString::Printf(TEXT("%s: %s"), *GetName(), Reason));
		// Never leave a partly imported map behind.
		Helper.EmptyValues();
		return nullptr;
	};
	for (;;)
	{
		KeyProp->ClearValue(Key.Get());
		ValueProp->ClearValue(Value.Get());
		if (*Buffer++ != TEXT('('))
		{
			return Fail(TEXT("each map entry starts with '('"));
		}
		SkipWhitespace(Buffer);
		Buffer = KeyProp->ImportText_Direct(Buffer, Key.Get(), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return Fail(TEXT("bad map key"));
		}
		SkipWhitespace(Buffer);
		if (*Buffer++ != TEXT(','))
		{
			return Fail(TEXT("a map key is followed by ','"));
		}
		SkipWhitespace(Buffer);
		Buffer = ValueProp->ImportText_Direct(Buffer, Value.Get(), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return Fail(TEXT("bad map value"));
		}
		SkipWhitespace(Buffer);
		if (*Buffer++ != TEXT(')'))
		{
			return Fail(TEXT("each map entry ends with ')'"));
		}
		// A repeated key keeps its first value, as the engine does.
		if (Helper.FindMapIndexWithKey(Key.Get()) == INDEX_NONE)
		{
			Helper.AddPair(Key.Get(), Value.Get());
		}
		SkipWhitespace(Buffer);
		const TCHAR Next = *Buffer++;
		if (Next == TEXT(')'))
		{
			return Buffer;
		}
		if (Next != TEXT(','))
		{
			return Fail(TEXT("expected ',' or ')' after a map entry"));
		}
		SkipWhitespace(Buffer);
	}
}

FString FMapProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (ExtendedTypeText && KeyProp && ValueProp)
	{
		FString KeyExtended;
		FString ValueExtended;
		const FString KeyType = KeyProp->GetCPPType(&KeyExtended, CPPExportFlags & ~CPPF_ArgumentOrReturnValue);
		const FString ValueType = ValueProp->GetCPPType(&ValueExtended, CPPExportFlags & ~CPPF_ArgumentOrReturnValue);
		*ExtendedTypeText = FString::Printf(TEXT("<%s%s,%s%s>"), *KeyType, *KeyExtended, *ValueType, *ValueExtended);
	}
	return TEXT("TMap");
}

FString FMapProperty::GetCPPMacroType(FString& ExtendedTypeText) const
{
	ExtendedTypeText = FString::Printf(TEXT("%s,%s"), KeyProp ? *KeyProp->GetCPPType() : TEXT(""), ValueProp ? *ValueProp->GetCPPType() : TEXT(""));
	return TEXT("TMAP");
}

bool FMapProperty::SameType(const FProperty* Other) const
{
	const FMapProperty* OtherMap = (const FMapProperty*)Other;
	return FProperty::SameType(Other) && KeyProp && ValueProp && KeyProp->SameType(OtherMap->KeyProp) && ValueProp->SameType(OtherMap->ValueProp);
}

void FMapProperty::InitializeValueInternal(void* Dest) const
{
	std::memset(Dest, 0, (SIZE_T)GetSize());
}

void FMapProperty::DestroyValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < GetArrayDim(); ++Index)
	{
		FScriptMapHelper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize()).EmptyValues();
	}
}

void FMapProperty::ClearValueInternal(void* Data) const
{
	FScriptMapHelper(this, Data).EmptyValues();
}

void FMapProperty::CopyValuesInternal(void* Dest, const void* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		FScriptMapHelper SrcHelper(this, (const uint8*)Src + (SIZE_T)Index * GetElementSize());
		FScriptMapHelper DestHelper(this, (uint8*)Dest + (SIZE_T)Index * GetElementSize());
		DestHelper.EmptyValues(SrcHelper.Num());
		for (int32 Pair = 0; Pair < SrcHelper.Num(); ++Pair)
		{
			const int32 NewIndex = DestHelper.AddDefaultValue_Invalid_NeedsRehash();
			KeyProp->CopySingleValue(DestHelper.GetKeyPtr(NewIndex), SrcHelper.GetKeyPtr(Pair));
			ValueProp->CopySingleValue(DestHelper.GetValuePtr(NewIndex), SrcHelper.GetValuePtr(Pair));
		}
	}
}
