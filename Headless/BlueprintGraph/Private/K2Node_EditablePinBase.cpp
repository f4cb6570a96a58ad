#include "K2Node_EditablePinBase.h"

#include "BlueprintNodeStatics.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EdGraphSchema_K2.h"
#include "K2Node_FunctionEntry.h"
#include "Serialization/PackageSerializer.h"
#include "UObject/TextProperty.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectIterator.h"

#define LOCTEXT_NAMESPACE "K2Node"

using namespace UE::BlueprintGraph::Private;

IMPLEMENT_SCRIPT_STRUCT(FKismetUserDeclaredFunctionMetadata, TEXT("/Script/BlueprintGraph"), STRUCT_NoFlags,
	UE_NATIVE_PROPERTY(FTextProperty, ToolTip, CPF_None);
	UE_NATIVE_PROPERTY(FTextProperty, Category, CPF_None);
	UE_NATIVE_PROPERTY(FTextProperty, Keywords, CPF_None);
	UE_NATIVE_PROPERTY(FTextProperty, CompactNodeTitle, CPF_None);
	UE_NATIVE_PROPERTY(FStructProperty, InstanceTitleColor, CPF_None, TBaseStructure<FLinearColor>::Get());
	UE_NATIVE_PROPERTY(FStrProperty, DeprecationMessage, CPF_None);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsDeprecated, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bCallInEditor, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bThreadSafe, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FBoolProperty, bIsUnsafeDuringActorConstruction, CPF_None, 0, (uint32)sizeof(bool), true);
	UE_NATIVE_PROPERTY(FInt8Property, HasLatentFunctions, CPF_Transient);
	// MetaDataMap is a native TMap, whose layout script maps do not share: the node serializer writes it.
)

IMPLEMENT_CLASS(UK2Node_EditablePinBase,
	UE_NATIVE_PROPERTY(FBoolProperty, bIsEditable, CPF_None, 0, (uint32)sizeof(bool), true);
)

FUserPinInfo::FUserPinInfo(const UEdGraphPin& InPin)
	: PinName(InPin.PinName)
	, PinType(InPin.PinType)
	, DesiredPinDirection(InPin.Direction)
	, PinDefaultValue(InPin.GetDefaultAsString())
{
}

void FKismetUserDeclaredFunctionMetadata::SetMetaData(FName Key, FString&& Value)
{
	MetaDataMap.Add(Key, MoveTemp(Value));
}

void FKismetUserDeclaredFunctionMetadata::SetMetaData(FName Key, const FString& Value)
{
	MetaDataMap.Add(Key, Value);
}

const FString* FKismetUserDeclaredFunctionMetadata::FindMetaData(FName Key) const
{
	return MetaDataMap.Find(Key);
}

void FKismetUserDeclaredFunctionMetadata::RemoveMetaData(FName Key)
{
	MetaDataMap.Remove(Key);
}

UK2Node_EditablePinBase::UK2Node_EditablePinBase()
{
}

void UK2Node_EditablePinBase::AllocateDefaultPins()
{
	Super::AllocateDefaultPins();
	for (const TSharedPtr<FUserPinInfo>& PinInfo : UserDefinedPins)
	{
		if (PinInfo.IsValid())
		{
			CreatePinFromUserDefinition(PinInfo);
		}
	}
}

FName UK2Node_EditablePinBase::CreateUniquePinName(FName InName) const
{
	FName Result = InName;
	for (int32 Index = 0; FindPin(Result) || UserDefinedPinExists(Result); ++Index)
	{
		Result = FName(*FString::Printf(TEXT("%s_%d"), *InName.ToString(), Index));
	}
	return Result;
}

UEdGraphPin* UK2Node_EditablePinBase::CreateUserDefinedPin(const FName InPinName, const FEdGraphPinType& InPinType, EEdGraphPinDirection InDesiredDirection, bool bUseUniqueName)
{
	FText ErrorMessage;
	if (InPinName.IsNone() || !CanCreateUserDefinedPin(InPinType, InDesiredDirection, ErrorMessage))
	{
		return nullptr;
	}
	TSharedPtr<FUserPinInfo> NewPinInfo = MakeShared<FUserPinInfo>();
	NewPinInfo->PinName = bUseUniqueName ? CreateUniquePinName(InPinName) : InPinName;
	NewPinInfo->PinType = InPinType;
	NewPinInfo->DesiredPinDirection = InDesiredDirection;
	Modify();
	UserDefinedPins.Add(NewPinInfo);
	UEdGraphPin* NewPin = CreatePinFromUserDefinition(NewPinInfo);
	if (!NewPin)
	{
		UserDefinedPins.Remove(NewPinInfo);
	}
	return NewPin;
}

void UK2Node_EditablePinBase::RemoveUserDefinedPin(TSharedPtr<FUserPinInfo> PinToRemove)
{
	if (!PinToRemove.IsValid())
	{
		return;
	}
	Modify();
	if (UEdGraphPin* Pin = FindPin(PinToRemove->PinName))
	{
		RemovePin(Pin);
	}
	UserDefinedPins.Remove(PinToRemove);
}

void UK2Node_EditablePinBase::RemoveUserDefinedPinByName(const FName PinName)
{
	for (int32 Index = 0; Index < UserDefinedPins.Num(); ++Index)
	{
		if (UserDefinedPins[Index].IsValid() && UserDefinedPins[Index]->PinName == PinName)
		{
			RemoveUserDefinedPin(UserDefinedPins[Index]);
			return;
		}
	}
}

bool UK2Node_EditablePinBase::UserDefinedPinExists(const FName PinName) const
{
	for (const TSharedPtr<FUserPinInfo>& PinInfo : UserDefinedPins)
	{
		if (PinInfo.IsValid() && PinInfo->PinName == PinName)
		{
			return true;
		}
	}
	return false;
}

ERenamePinResult::Type UK2Node_EditablePinBase::RenameUserDefinedPin(const FName OldName, const FName NewName, bool bTest)
{
	TSharedPtr<FUserPinInfo> Declaration;
	for (const TSharedPtr<FUserPinInfo>& PinInfo : UserDefinedPins)
	{
		if (PinInfo.IsValid() && PinInfo->PinName == OldName)
		{
			Declaration = PinInfo;
		}
		else if (PinInfo.IsValid() && PinInfo->PinName == NewName)
		{
			return ERenamePinResult::ERenamePinResult_NameCollision;
		}
	}
	UEdGraphPin* Pin = FindPin(OldName);
	if (!Declaration.IsValid() && !Pin)
	{
		return ERenamePinResult::ERenamePinResult_NoSuchPin;
	}
	if (OldName != NewName && FindPin(NewName))
	{
		return ERenamePinResult::ERenamePinResult_NameCollision;
	}
	if (!bTest)
	{
		Modify();
		if (Declaration.IsValid())
		{
			Declaration->PinName = NewName;
		}
		if (Pin)
		{
			Pin->PinName = NewName;
			Pin->PinFriendlyName = FText();
		}
	}
	return ERenamePinResult::ERenamePinResult_Success;
}

bool UK2Node_EditablePinBase::ModifyUserDefinedPinDefaultValue(TSharedPtr<FUserPinInfo> PinInfo, const FString& NewDefaultValue)
{
	if (!PinInfo.IsValid())
	{
		return false;
	}
	const UEdGraphSchema_K2* Schema = GetDefault<UEdGraphSchema_K2>();
	if (UEdGraphPin* Pin = FindPin(PinInfo->PinName))
	{
		const FString Problem = Schema->IsPinDefaultValid(Pin, NewDefaultValue, nullptr, FText::GetEmpty());
		if (!Problem.IsEmpty())
		{
			return false;
		}
		Schema->TrySetDefaultValue(*Pin, NewDefaultValue, false);
	}
	PinInfo->PinDefaultValue = NewDefaultValue;
	return true;
}

namespace UE::BlueprintGraph::Private
{
	namespace
	{
		const TCHAR* DirectionName(EEdGraphPinDirection Direction)
		{
			switch (Direction)
			{
			case EGPD_Input:
				return TEXT("EGPD_Input");
			case EGPD_Output:
				return TEXT("EGPD_Output");
			default:
				return TEXT("EGPD_MAX");
			}
		}

		/** A pin type written as its struct's export text, with a property that is never one of the struct's members. */
		FStructProperty* PinTypeProperty()
		{
			static FStructProperty* Property = new FStructProperty(FEdGraphPinType::StaticStruct(), TEXT("UserPinType"),
				RF_Public | RF_MarkAsNative | RF_Transient, 0, CPF_None, FEdGraphPinType::StaticStruct());
			return Property;
		}

		/**
		 * Nodes with user-declared pins keep the declarations beside the pins: everything the graph node serializer
		 * writes, plus "UserDefinedPins", one object per declaration in order.
		 */
		class FEditablePinNodeSerializer : public UE::Headless::IPackageSerializer
		{
		public:
			virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, UE::Headless::FPackageSaveContext& Context) const override
			{
				NodeSerializer().SaveObject(Object, OutEntry, Context);
				const UK2Node_EditablePinBase& Node = static_cast<const UK2Node_EditablePinBase&>(Object);
				if (const UK2Node_FunctionEntry* Entry = Cast<UK2Node_FunctionEntry>(&Node); Entry && Entry->MetaData.MetaDataMap.Num() > 0)
				{
					TSharedRef<FJsonObject> MetaData = MakeShared<FJsonObject>();
					for (const TPair<FName, FString>& Pair : Entry->MetaData.MetaDataMap)
					{
						MetaData->SetStringField(Pair.Key.ToString(), Pair.Value);
					}
					OutEntry.SetObjectField(TEXT("FunctionMetaData"), MetaData);
				}
				if (Node.UserDefinedPins.Num() == 0)
				{
					return;
				}
				TArray<TSharedPtr<FJsonValue>> Entries;
				for (const TSharedPtr<FUserPinInfo>& PinInfo : Node.UserDefinedPins)
				{
					if (!PinInfo.IsValid())
					{
						continue;
					}
					TSharedRef<FJsonObject> Entry = MakeShared<FJsonObject>();
					Entry->SetStringField(TEXT("PinName"), PinInfo->PinName.ToString());
					FString TypeText;
					PinTypeProperty()->ExportText_Direct(TypeText, &PinInfo->PinType, nullptr, nullptr, PPF_None);
					Context.AddReferencesInValue(PinTypeProperty(), &PinInfo->PinType);
					Entry->SetStringField(TEXT("PinType"), TypeText);
					Entry->SetStringField(TEXT("DesiredPinDirection"), DirectionName(PinInfo->DesiredPinDirection.GetValue()));
					if (!PinInfo->PinDefaultValue.IsEmpty())
					{
						Entry->SetStringField(TEXT("PinDefaultValue"), PinInfo->PinDefaultValue);
					}
					Entries.Add(MakeShared<FJsonValueObject>(Entry));
				}
				OutEntry.SetArrayField(TEXT("UserDefinedPins"), Entries);
			}

			virtual void LoadObject(UObject& Object, const FJsonObject& Entry, UE::Headless::FPackageLoadContext& Context) const override
			{
				NodeSerializer().LoadObject(Object, Entry, Context);
				UK2Node_EditablePinBase& Node = static_cast<UK2Node_EditablePinBase&>(Object);
				Node.UserDefinedPins.Reset();
				if (UK2Node_FunctionEntry* FunctionEntry = Cast<UK2Node_FunctionEntry>(&Node))
				{
					FunctionEntry->MetaData.MetaDataMap.Reset();
					const TSharedPtr<FJsonObject>* MetaData = nullptr;
					if (Entry.TryGetObjectField(TEXT("FunctionMetaData"), MetaData) && MetaData->IsValid())
					{
						for (const auto& Pair : (*MetaData)->Values)
						{
							FString Value;
							if (!Pair.Value.IsValid() || !Pair.Value->TryGetString(Value))
							{
								Context.AddError(FString::Printf(TEXT("function metadata '%s' is not a string"), *Pair.Key));
								return;
							}
							FunctionEntry->MetaData.MetaDataMap.Add(FName(*Pair.Key), Value);
						}
					}
				}
				const TSharedPtr<FJsonValue> Value = Entry.TryGetField(TEXT("UserDefinedPins"));
				if (!Value.IsValid())
				{
					return;
				}
				if (Value->Type != EJson::Array)
				{
					Context.AddError(TEXT("its \"UserDefinedPins\" is not an array"));
					return;
				}
				for (const TSharedPtr<FJsonValue>& Element : Value->AsArray())
				{
					const TSharedPtr<FJsonObject>* PinEntry = nullptr;
					if (!Element.IsValid() || !Element->TryGetObject(PinEntry) || !PinEntry->IsValid())
					{
						Context.AddError(TEXT("a user-defined pin is not a JSON object"));
						return;
					}
					TSharedPtr<FUserPinInfo> PinInfo = MakeShared<FUserPinInfo>();
					FString Name;
					FString TypeText;
					FString Direction;
					if (!(*PinEntry)->TryGetStringField(TEXT("PinName"), Name) || !(*PinEntry)->TryGetStringField(TEXT("PinType"), TypeText)
						|| !(*PinEntry)->TryGetStringField(TEXT("DesiredPinDirection"), Direction))
					{
						Context.AddError(TEXT("a user-defined pin lacks its name, type or direction"));
						return;
					}
					PinInfo->PinName = FName(*Name);
					if (!PinTypeProperty()->ImportText_Direct(*TypeText, &PinInfo->PinType, nullptr, PPF_None))
					{
						Context.AddError(FString::Printf(TEXT("user-defined pin '%s' has an unreadable type '%s'"), *Name, *TypeText));
						return;
					}
					if (Direction == TEXT("EGPD_Input"))
					{
						PinInfo->DesiredPinDirection = EGPD_Input;
					}
					else if (Direction == TEXT("EGPD_Output"))
					{
						PinInfo->DesiredPinDirection = EGPD_Output;
					}
					else if (Direction == TEXT("EGPD_MAX"))
					{
						PinInfo->DesiredPinDirection = EGPD_MAX;
					}
					else
					{
						Context.AddError(FString::Printf(TEXT("user-defined pin '%s' has an unknown direction '%s'"), *Name, *Direction));
						return;
					}
					(*PinEntry)->TryGetStringField(TEXT("PinDefaultValue"), PinInfo->PinDefaultValue);
					Node.UserDefinedPins.Add(PinInfo);
				}
			}

			virtual void PostLoadObject(UObject& Object, UE::Headless::FPackageLoadContext& Context) const override
			{
				NodeSerializer().PostLoadObject(Object, Context);
			}

		private:
			/** The graph node serializer, which writes the properties and the pins. */
			static const UE::Headless::IPackageSerializer& NodeSerializer()
			{
				return UE::Headless::FPackageSerializerRegistry::Get().FindSerializer(UEdGraphNode::StaticClass());
			}
		};

		void RegisterEditablePinNodeSerializer()
		{
			UE::Headless::FPackageSerializerRegistry::Get().Register(
				FTopLevelAssetPath(TEXT("/Script/BlueprintGraph"), TEXT("K2Node_EditablePinBase")), MakeShared<FEditablePinNodeSerializer>());
		}

		UE::CoreUObject::Private::FRegisterCompiledInCallback RegisterEditablePinNodeSerializerCallback(&RegisterEditablePinNodeSerializer);
	}
}

#undef LOCTEXT_NAMESPACE
