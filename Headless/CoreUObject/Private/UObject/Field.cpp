#include "UObject/Field.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/Package.h"
#include "Misc/CString.h"
#include "ObjectRegistry.h"

// FFieldClass

FFieldClass::FFieldClass(const TCHAR* InCPPName, uint64 InId, uint64 InCastFlags, FFieldClass* InSuperClass, FConstructFn ConstructFnPtr)
	: Id(InId), CastFlags(InCastFlags), SuperClass(InSuperClass), ConstructFn(ConstructFnPtr)
{
	// "FIntProperty" is known as "IntProperty", as in the engine.
	FString CppName(InCPPName);
	if (CppName.StartsWith(TEXT("F"), ESearchCase::CaseSensitive))
	{
		CppName.RightChopInline(1);
	}
	Name = FName(*CppName);
	GetAllFieldClasses().Add(this);
	GetNameToFieldClassMap().Add(Name, this);
}

bool FFieldClass::IsChildOf(const FFieldClass* InClass) const
{
	for (const FFieldClass* Class = this; Class; Class = Class->SuperClass)
	{
		if (Class == InClass)
		{
			return true;
		}
	}
	return false;
}

TArray<FFieldClass*>& FFieldClass::GetAllFieldClasses()
{
	static TArray<FFieldClass*> AllClasses;
	return AllClasses;
}

TMap<FName, FFieldClass*>& FFieldClass::GetNameToFieldClassMap()
{
	static TMap<FName, FFieldClass*> NameToClass;
	return NameToClass;
}

// FFieldVariant

bool FFieldVariant::IsObjectA(const UObject* InObject, const UClass* InClass)
{
	return InObject->IsA(InClass);
}

bool FFieldVariant::IsFieldA(const FField* InField, const FFieldClass* InClass)
{
	return InField->IsA(InClass);
}

FFieldVariant FFieldVariant::GetOwnerVariant() const
{
	if (bIsUObject)
	{
		return Object ? FFieldVariant(Object->GetOuter()) : FFieldVariant();
	}
	return Field ? Field->GetOwnerVariant() : FFieldVariant();
}

FString FFieldVariant::GetName() const
{
	return bIsUObject ? (Object ? Object->GetName() : FString(TEXT("None"))) : (Field ? Field->GetName() : FString(TEXT("None")));
}

FName FFieldVariant::GetFName() const
{
	return bIsUObject ? (Object ? Object->GetFName() : FName()) : (Field ? Field->GetFName() : FName());
}

FString FFieldVariant::GetPathName() const
{
	return bIsUObject ? (Object ? Object->GetPathName() : FString(TEXT("None"))) : (Field ? Field->GetPathName() : FString(TEXT("None")));
}

FString FFieldVariant::GetFullName() const
{
	return bIsUObject ? (Object ? Object->GetFullName() : FString(TEXT("None"))) : (Field ? Field->GetFullName() : FString(TEXT("None")));
}

UPackage* FFieldVariant::GetOutermost() const
{
	return bIsUObject ? (Object ? Object->GetPackage() : nullptr) : (Field ? Field->GetOutermost() : nullptr);
}

bool FFieldVariant::IsNative() const
{
	return bIsUObject ? (Object && Object->IsNative()) : (Field && Field->IsNative());
}

// FField

FFieldClass* FField::StaticClass()
{
	static FFieldClass StaticFieldClass(TEXT("FField"), 0, 0, nullptr, nullptr);
	return &StaticFieldClass;
}

FField::FField(EInternal InInternal, FFieldClass* InClass)
{
}

FField::FField(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: Owner(InOwner), NamePrivate(InName), FlagsPrivate(InObjectFlags)
{
}

FField::~FField()
{
}

bool FField::IsNative() const
{
	return Owner.IsNative();
}

UObject* FField::GetOwnerUObject() const
{
	FFieldVariant TempOwner = Owner;
	while (TempOwner.IsValid() && !TempOwner.IsUObject())
	{
		TempOwner = TempOwner.GetOwnerVariant();
	}
	return TempOwner.ToUObject();
}

UStruct* FField::GetOwnerStruct() const
{
	for (UObject* Object = GetOwnerUObject(); Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UStruct::StaticClass()))
		{
			return (UStruct*)Object;
		}
	}
	return nullptr;
}

UClass* FField::GetOwnerClass() const
{
	for (UObject* Object = GetOwnerUObject(); Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UClass::StaticClass()))
		{
			return (UClass*)Object;
		}
	}
	return nullptr;
}

UField* FField::GetOwnerUField() const
{
	for (UObject* Object = GetOwnerUObject(); Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UField::StaticClass()))
		{
			return (UField*)Object;
		}
	}
	return nullptr;
}

UPackage* FField::GetOutermost() const
{
	UObject* OwnerObject = GetOwnerUObject();
	return OwnerObject ? OwnerObject->GetPackage() : nullptr;
}

void FField::GetPathName(const UObject* StopOuter, FString& ResultString) const
{
	TArray<FName> ParentFields;
	for (FFieldVariant TempOwner = Owner; TempOwner.IsValid(); TempOwner = TempOwner.GetOwnerVariant())
	{
		if (!TempOwner.IsUObject())
		{
			ParentFields.Add(TempOwner.ToField()->GetFName());
		}
		else
		{
			TempOwner.ToUObject()->GetPathName(StopOuter, ResultString);
			ResultString += TEXT(":");
			break;
		}
	}
	for (int32 Index = ParentFields.Num() - 1; Index >= 0; --Index)
	{
		ParentFields[Index].AppendString(ResultString);
		ResultString += TEXT(".");
	}
	GetFName().AppendString(ResultString);
}

FString FField::GetPathName(const UObject* StopOuter) const
{
	FString Result;
	GetPathName(StopOuter, Result);
	return Result;
}

FString FField::GetFullName() const
{
	return GetClass()->GetName() + TEXT(" ") + GetPathName();
}

void FField::AppendMetaData(const TMap<FName, FString>& MetaDataMapToAppend)
{
	for (const TPair<FName, FString>& Entry : MetaDataMapToAppend)
	{
		SetMetaData(Entry.Key, FString(Entry.Value));
	}
}

void FField::CopyMetaData(const FField* InSourceField, FField* InDestField)
{
	if (InSourceField && InDestField && InSourceField->GetMetaDataMap())
	{
		InDestField->AppendMetaData(*InSourceField->GetMetaDataMap());
	}
}

FText FField::GetDisplayNameText() const
{
	if (const FString* DisplayName = FindMetaData(TEXT("DisplayName")))
	{
		return FText::FromString(*DisplayName);
	}
	return FText::FromString(FName::NameToDisplayString(GetName(), IsA<FBoolProperty>()));
}

FText FField::GetToolTipText(bool bShortTooltip) const
{
	const FString* ToolTip = MetaData.FindToolTip(bShortTooltip);
	if (!ToolTip)
	{
		return GetDisplayNameText();
	}
	return FText::FromString(*ToolTip);
}

FField* FField::Duplicate(const FField* InField, FFieldVariant DestOwner, const FName DestName, EObjectFlags FlagMask, EInternalObjectFlags InternalFlagsMask)
{
	if (!InField)
	{
		return nullptr;
	}
	FField* NewField = InField->GetClass()->Construct(DestOwner, DestName.IsNone() ? InField->GetFName() : DestName, InField->GetFlags() & FlagMask);
	if (NewField)
	{
		NewField->PostDuplicate(*InField);
	}
	return NewField;
}

void FField::PostDuplicate(const FField& InField)
{
	CopyMetaData(&InField, this);
}
