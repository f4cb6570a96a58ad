#include "EdGraph/EdGraphNode.h"
#include "EdGraph/EdGraphPin.h"
#include "EdGraph/EdGraph.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/PackageSerializer.h"
#include "UObject/Class.h"
#include "UObject/TextProperty.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/UnrealType.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectIterator.h"
#include "UObject/WeakObjectPtr.h"

// Pins are not objects, so the generic writer cannot see them: a node's entry carries its reflected
// properties as usual plus "pins", one JSON object per pin in display order, named after UEdGraphPin's
// members. Links name the far node (a sibling in the same graph) and the far pin's id; they are resolved
// once every node of the package has its pins, each pin filling its own list so that the order of
// LinkedTo comes back exactly as it was saved.

namespace UE::Engine::Private
{
	namespace
	{
		constexpr EObjectFlags HelperFieldFlags = RF_Public | RF_MarkAsNative | RF_Transient;

		/** Free-standing properties used to write and read pin values in the engine's text forms. */
		struct FPinValueProperties
		{
			FStructProperty* PinType;
			FTextProperty* Text;

			static const FPinValueProperties& Get()
			{
				// Owned by the pin type struct without being one of its members, so they never show up
				// among its fields; they live as long as the program.
				static const FPinValueProperties Properties = []()
				{
					UScriptStruct* Owner = FEdGraphPinType::StaticStruct();
					FPinValueProperties Result;
					Result.PinType = new FStructProperty(Owner, TEXT("PinType"), HelperFieldFlags, 0, CPF_None, Owner);
					Result.Text = new FTextProperty(Owner, TEXT("Text"), HelperFieldFlags);
					return Result;
				}();
				return Properties;
			}
		};

		FString ExportValue(const FProperty* Property, const void* Value)
		{
			FString Text;
			Property->ExportText_Direct(Text, Value, nullptr, nullptr, PPF_None);
			return Text;
		}

		bool ImportValue(const FProperty* Property, const FString& Text, void* Value, FString& OutError)
		{
			const TCHAR* Rest = Property->ImportText_Direct(*Text, Value, nullptr, PPF_None);
			if (!Rest)
			{
				OutError = FString::Printf(TEXT("cannot read '%s' as a %s"), *Text, *Property->GetName());
				return false;
			}
			while (*Rest == TEXT(' ') || *Rest == TEXT('\t'))
			{
				++Rest;
			}
			if (*Rest)
			{
				OutError = FString::Printf(TEXT("unexpected text after the %s value in '%s'"), *Property->GetName(), *Text);
				return false;
			}
			return true;
		}

		/**
		 * The pin's flags that are saved, by member name, with the value a new pin has: a flag is written only when it
		 * differs from that value, so a flag that defaults to true and was cleared survives a load. bWasTrashed is never
		 * saved: a trashed pin is not on its node.
		 */
		struct FPinFlag
		{
			const TCHAR* Name;
			bool (*Get)(const UEdGraphPin&);
			void (*Set)(UEdGraphPin&, bool);
			bool bNewPinValue;
		};

#define UE_PIN_FLAG(Member, Default) FPinFlag{TEXT(#Member), [](const UEdGraphPin& Pin) { return bool(Pin.Member); }, [](UEdGraphPin& Pin, bool bValue) { Pin.Member = bValue; }, Default}
		const FPinFlag PinFlags[] = {
			UE_PIN_FLAG(bHidden, false),
			UE_PIN_FLAG(bNotConnectable, false),
			UE_PIN_FLAG(bDefaultValueIsReadOnly, false),
			UE_PIN_FLAG(bDefaultValueIsIgnored, false),
			UE_PIN_FLAG(bAdvancedView, false),
			UE_PIN_FLAG(bDeprecated, false),
			UE_PIN_FLAG(bDisplayAsMutableRef, false),
			UE_PIN_FLAG(bAllowFriendlyName, true),
			UE_PIN_FLAG(bOrphanedPin, false),
		};
#undef UE_PIN_FLAG

		FString GuidText(const FGuid& Guid)
		{
			return Guid.ToString(EGuidFormats::Digits);
		}

		/** "<NodeName> <PinId>" of a pin, as LinkedTo entries are written. */
		FString PinReferenceText(const UEdGraphPin* Pin)
		{
			return FString::Printf(TEXT("%s %s"), *Pin->GetOwningNode()->GetName(), *GuidText(Pin->PinId));
		}

		TSharedRef<FJsonValue> StringArray(const TArray<FString>& Strings)
		{
			TArray<TSharedPtr<FJsonValue>> Values;
			for (const FString& String : Strings)
			{
				Values.Add(MakeShared<FJsonValueString>(String));
			}
			return MakeShared<FJsonValueArray>(Values);
		}

		/** Reads an optional string field; a field of another type is an error. */
		bool ReadString(const FJsonObject& Entry, const TCHAR* Field, FString& OutValue, FString& OutError)
		{
			const TSharedPtr<FJsonValue> Value = Entry.TryGetField(Field);
			if (!Value.IsValid())
			{
				return true;
			}
			if (Value->Type != EJson::String)
			{
				OutError = FString::Printf(TEXT("\"%s\" is not a string"), Field);
				return false;
			}
			OutValue = Value->AsString();
			return true;
		}

		bool ReadStringArray(const FJsonObject& Entry, const TCHAR* Field, TArray<FString>& OutValues, FString& OutError)
		{
			const TSharedPtr<FJsonValue> Value = Entry.TryGetField(Field);
			if (!Value.IsValid())
			{
				return true;
			}
			if (Value->Type != EJson::Array)
			{
				OutError = FString::Printf(TEXT("\"%s\" is not an array"), Field);
				return false;
			}
			for (const TSharedPtr<FJsonValue>& Element : Value->AsArray())
			{
				if (!Element.IsValid() || Element->Type != EJson::String)
				{
					OutError = FString::Printf(TEXT("\"%s\" holds something other than strings"), Field);
					return false;
				}
				OutValues.Add(Element->AsString());
			}
			return true;
		}

		bool ReadGuid(const FJsonObject& Entry, const TCHAR* Field, bool bRequired, FGuid& OutGuid, FString& OutError)
		{
			FString Text;
			if (!ReadString(Entry, Field, Text, OutError))
			{
				return false;
			}
			if (Text.IsEmpty())
			{
				if (bRequired)
				{
					OutError = FString::Printf(TEXT("\"%s\" is missing"), Field);
					return false;
				}
				return true;
			}
			if (!FGuid::ParseExact(Text, EGuidFormats::Digits, OutGuid))
			{
				OutError = FString::Printf(TEXT("\"%s\" is not a guid of 32 hex digits: '%s'"), Field, *Text);
				return false;
			}
			return true;
		}

		/** What a loaded node still has to resolve once every node of the package has its pins. */
		struct FPendingNode
		{
			TWeakObjectPtr<UEdGraphNode> Node;
			/** Per pin, in Pins order: the LinkedTo entries as written. */
			TArray<TArray<FString>> Links;
			/** Per pin: the ids of its sub-pins. */
			TArray<TArray<FGuid>> SubPins;
			TArray<FGuid> ParentPins;
		};
	}

	class FEdGraphNodePackageSerializer : public UE::Headless::FPropertyPackageSerializer
	{
	public:
		virtual void SaveObject(const UObject& Object, FJsonObject& OutEntry, UE::Headless::FPackageSaveContext& Context) const override
		{
			const UEdGraphNode& Node = static_cast<const UEdGraphNode&>(Object);
			UE::Headless::FPropertyPackageSerializer::SaveObject(Object, OutEntry, Context);

			const FPinValueProperties& Helpers = FPinValueProperties::Get();
			TArray<TSharedPtr<FJsonValue>> PinEntries;
			for (const UEdGraphPin* Pin : Node.Pins)
			{
				const TSharedRef<FJsonObject> PinEntry = MakeShared<FJsonObject>();
				PinEntry->SetStringField(TEXT("PinId"), GuidText(Pin->PinId));
				PinEntry->SetStringField(TEXT("PinName"), Pin->PinName.ToString());
				if (!Pin->PinFriendlyName.IsEmpty())
				{
					PinEntry->SetStringField(TEXT("PinFriendlyName"), ExportValue(Helpers.Text, &Pin->PinFriendlyName));
				}
				if (!Pin->PinToolTip.IsEmpty())
				{
					PinEntry->SetStringField(TEXT("PinToolTip"), Pin->PinToolTip);
				}
				PinEntry->SetStringField(TEXT("Direction"), Pin->Direction == EGPD_Output ? TEXT("EGPD_Output") : TEXT("EGPD_Input"));
				PinEntry->SetStringField(TEXT("PinType"), ExportValue(Helpers.PinType, &Pin->PinType));
				Context.AddReferencesInValue(Helpers.PinType, &Pin->PinType);
				if (!Pin->DefaultValue.IsEmpty())
				{
					PinEntry->SetStringField(TEXT("DefaultValue"), Pin->DefaultValue);
				}
				if (!Pin->AutogeneratedDefaultValue.IsEmpty())
				{
					PinEntry->SetStringField(TEXT("AutogeneratedDefaultValue"), Pin->AutogeneratedDefaultValue);
				}
				if (UObject* DefaultObject = Pin->DefaultObject)
				{
					PinEntry->SetStringField(TEXT("DefaultObject"), DefaultObject->GetPathName());
					Context.AddReferencedObject(DefaultObject);
				}
				if (!Pin->DefaultTextValue.IsEmpty())
				{
					PinEntry->SetStringField(TEXT("DefaultTextValue"), ExportValue(Helpers.Text, &Pin->DefaultTextValue));
				}
				if (Pin->SourceIndex != INDEX_NONE)
				{
					PinEntry->SetNumberField(TEXT("SourceIndex"), Pin->SourceIndex);
				}
				if (Pin->LinkedTo.Num() > 0)
				{
					TArray<FString> Links;
					for (const UEdGraphPin* Linked : Pin->LinkedTo)
					{
						const UEdGraphNode* LinkedNode = Linked ? Linked->GetOwningNodeUnchecked() : nullptr;
						if (!LinkedNode || LinkedNode->GetOuter() != Node.GetOuter())
						{
							Context.AddError(FString::Printf(TEXT("pin '%s' of node '%s' is linked to a pin outside its graph"), *Pin->GetName(), *Node.GetName()));
							continue;
						}
						Links.Add(PinReferenceText(Linked));
					}
					PinEntry->SetField(TEXT("LinkedTo"), StringArray(Links));
				}
				if (Pin->SubPins.Num() > 0)
				{
					TArray<FString> SubPins;
					for (const UEdGraphPin* SubPin : Pin->SubPins)
					{
						SubPins.Add(GuidText(SubPin->PinId));
					}
					PinEntry->SetField(TEXT("SubPins"), StringArray(SubPins));
				}
				if (Pin->ParentPin)
				{
					PinEntry->SetStringField(TEXT("ParentPin"), GuidText(Pin->ParentPin->PinId));
				}
				for (const FPinFlag& Flag : PinFlags)
				{
					if (Flag.Get(*Pin) != Flag.bNewPinValue)
					{
						PinEntry->SetBoolField(Flag.Name, Flag.Get(*Pin));
					}
				}
				if (Pin->PersistentGuid.IsValid())
				{
					PinEntry->SetStringField(TEXT("PersistentGuid"), GuidText(Pin->PersistentGuid));
				}
				PinEntries.Add(MakeShared<FJsonValueObject>(PinEntry));
			}
			OutEntry.SetArrayField(TEXT("pins"), PinEntries);
		}

		virtual void LoadObject(UObject& Object, const FJsonObject& Entry, UE::Headless::FPackageLoadContext& Context) const override
		{
			UEdGraphNode& Node = static_cast<UEdGraphNode&>(Object);
			UE::Headless::FPropertyPackageSerializer::LoadObject(Object, Entry, Context);

			// A node read from a file has exactly the pins the file lists.
			while (Node.Pins.Num() > 0)
			{
				Node.RemovePin(Node.Pins.Last());
			}

			FPendingNode Pending;
			Pending.Node = &Node;
			const TSharedPtr<FJsonValue> PinsValue = Entry.TryGetField(TEXT("pins"));
			if (PinsValue.IsValid())
			{
				if (PinsValue->Type != EJson::Array)
				{
					Context.AddError(TEXT("its \"pins\" is not an array"));
					return;
				}
				const FPinValueProperties& Helpers = FPinValueProperties::Get();
				const TArray<TSharedPtr<FJsonValue>>& PinValues = PinsValue->AsArray();
				for (int32 PinIndex = 0; PinIndex < PinValues.Num(); ++PinIndex)
				{
					FString Error;
					if (!ReadPin(Node, PinValues[PinIndex], Helpers, Pending, Error))
					{
						Context.AddError(FString::Printf(TEXT("pin %d: %s"), PinIndex, *Error));
						return;
					}
				}
			}
			for (int32 Index = 0; Index < Node.Pins.Num(); ++Index)
			{
				for (int32 Other = 0; Other < Index; ++Other)
				{
					if (Node.Pins[Other]->PinId == Node.Pins[Index]->PinId)
					{
						Context.AddError(FString::Printf(TEXT("pins %d and %d share the id %s"), Other, Index, *GuidText(Node.Pins[Index]->PinId)));
						return;
					}
				}
			}

			// Replaces any entry a failed load left for an earlier object at the same address.
			PendingNodes.Add(&Node, MoveTemp(Pending));
		}

		virtual void PostLoadObject(UObject& Object, UE::Headless::FPackageLoadContext& Context) const override
		{
			UEdGraphNode& Node = static_cast<UEdGraphNode&>(Object);
			FPendingNode* Pending = FindPending(&Node);
			if (Pending)
			{
				FString Error;
				if (!Resolve(Node, *Pending, Error))
				{
					Context.AddError(Error);
				}
				PendingNodes.Remove(&Node);
			}
			IPackageSerializer::PostLoadObject(Object, Context);
		}

	private:
		static bool ReadPin(UEdGraphNode& Node, const TSharedPtr<FJsonValue>& Value, const FPinValueProperties& Helpers, FPendingNode& Pending, FString& OutError)
		{
			if (!Value.IsValid() || Value->Type != EJson::Object)
			{
				OutError = TEXT("not a JSON object");
				return false;
			}
			const FJsonObject& PinEntry = *Value->AsObject();
			static const TCHAR* const KnownFields[] = {TEXT("PinId"), TEXT("PinName"), TEXT("PinFriendlyName"), TEXT("PinToolTip"), TEXT("Direction"),
				TEXT("PinType"), TEXT("DefaultValue"), TEXT("AutogeneratedDefaultValue"), TEXT("DefaultObject"), TEXT("DefaultTextValue"),
				TEXT("SourceIndex"), TEXT("LinkedTo"), TEXT("SubPins"), TEXT("ParentPin"), TEXT("PersistentGuid")};
			for (const auto& Field : PinEntry.Values)
			{
				bool bKnown = false;
				for (const TCHAR* Known : KnownFields)
				{
					bKnown |= Field.Key == Known;
				}
				for (const FPinFlag& Flag : PinFlags)
				{
					bKnown |= Field.Key == Flag.Name;
				}
				if (!bKnown)
				{
					OutError = FString::Printf(TEXT("unknown field \"%s\""), *Field.Key);
					return false;
				}
			}

			FGuid PinId;
			FString PinName;
			FString Direction;
			if (!ReadGuid(PinEntry, TEXT("PinId"), true, PinId, OutError) || !ReadString(PinEntry, TEXT("PinName"), PinName, OutError)
				|| !ReadString(PinEntry, TEXT("Direction"), Direction, OutError))
			{
				return false;
			}
			if (PinName.IsEmpty())
			{
				OutError = TEXT("\"PinName\" is missing");
				return false;
			}
			if (Direction != TEXT("EGPD_Input") && Direction != TEXT("EGPD_Output"))
			{
				OutError = FString::Printf(TEXT("\"Direction\" must be EGPD_Input or EGPD_Output, not '%s'"), *Direction);
				return false;
			}
			FString PinTypeText;
			if (!ReadString(PinEntry, TEXT("PinType"), PinTypeText, OutError))
			{
				return false;
			}
			FEdGraphPinType PinType;
			if (!PinTypeText.IsEmpty() && !ImportValue(Helpers.PinType, PinTypeText, &PinType, OutError))
			{
				return false;
			}

			UEdGraphPin* Pin = Node.CreatePin(Direction == TEXT("EGPD_Output") ? EGPD_Output : EGPD_Input, PinType, FName(*PinName));
			Pin->PinId = PinId;

			FString Text;
			if (!ReadString(PinEntry, TEXT("PinFriendlyName"), Text, OutError) || (!Text.IsEmpty() && !ImportValue(Helpers.Text, Text, &Pin->PinFriendlyName, OutError)))
			{
				return false;
			}
			Text.Reset();
			if (!ReadString(PinEntry, TEXT("DefaultTextValue"), Text, OutError) || (!Text.IsEmpty() && !ImportValue(Helpers.Text, Text, &Pin->DefaultTextValue, OutError)))
			{
				return false;
			}
			if (!ReadString(PinEntry, TEXT("PinToolTip"), Pin->PinToolTip, OutError) || !ReadString(PinEntry, TEXT("DefaultValue"), Pin->DefaultValue, OutError)
				|| !ReadString(PinEntry, TEXT("AutogeneratedDefaultValue"), Pin->AutogeneratedDefaultValue, OutError))
			{
				return false;
			}
			FString DefaultObjectPath;
			if (!ReadString(PinEntry, TEXT("DefaultObject"), DefaultObjectPath, OutError))
			{
				return false;
			}
			if (!DefaultObjectPath.IsEmpty())
			{
				Pin->DefaultObject = StaticFindObject(UObject::StaticClass(), nullptr, *DefaultObjectPath);
				if (!Pin->DefaultObject)
				{
					OutError = FString::Printf(TEXT("its default object '%s' does not exist"), *DefaultObjectPath);
					return false;
				}
			}
			if (const TSharedPtr<FJsonValue> SourceIndex = PinEntry.TryGetField(TEXT("SourceIndex")))
			{
				double Number = 0.0;
				if (SourceIndex->Type != EJson::Number || !SourceIndex->TryGetNumber(Number) || Number != double(int32(Number)))
				{
					OutError = TEXT("\"SourceIndex\" is not an integer");
					return false;
				}
				Pin->SourceIndex = int32(Number);
			}
			for (const FPinFlag& Flag : PinFlags)
			{
				if (const TSharedPtr<FJsonValue> FlagValue = PinEntry.TryGetField(Flag.Name))
				{
					if (FlagValue->Type != EJson::Boolean)
					{
						OutError = FString::Printf(TEXT("\"%s\" is not true or false"), Flag.Name);
						return false;
					}
					Flag.Set(*Pin, FlagValue->AsBool());
				}
			}
			if (!ReadGuid(PinEntry, TEXT("PersistentGuid"), false, Pin->PersistentGuid, OutError))
			{
				return false;
			}

			TArray<FString> Links;
			TArray<FString> SubPinTexts;
			FGuid ParentPin;
			if (!ReadStringArray(PinEntry, TEXT("LinkedTo"), Links, OutError) || !ReadStringArray(PinEntry, TEXT("SubPins"), SubPinTexts, OutError)
				|| !ReadGuid(PinEntry, TEXT("ParentPin"), false, ParentPin, OutError))
			{
				return false;
			}
			TArray<FGuid> SubPins;
			for (const FString& SubPinText : SubPinTexts)
			{
				FGuid SubPin;
				if (!FGuid::ParseExact(SubPinText, EGuidFormats::Digits, SubPin))
				{
					OutError = FString::Printf(TEXT("sub-pin '%s' is not a guid of 32 hex digits"), *SubPinText);
					return false;
				}
				SubPins.Add(SubPin);
			}
			Pending.Links.Add(MoveTemp(Links));
			Pending.SubPins.Add(MoveTemp(SubPins));
			Pending.ParentPins.Add(ParentPin);
			return true;
		}

		bool Resolve(UEdGraphNode& Node, const FPendingNode& Pending, FString& OutError) const
		{
			for (int32 PinIndex = 0; PinIndex < Node.Pins.Num(); ++PinIndex)
			{
				UEdGraphPin* Pin = Node.Pins[PinIndex];
				for (const FGuid& SubPinId : Pending.SubPins[PinIndex])
				{
					UEdGraphPin* SubPin = Node.FindPinById(SubPinId);
					if (!SubPin || SubPin == Pin)
					{
						OutError = FString::Printf(TEXT("pin '%s' lists a sub-pin %s the node does not have"), *Pin->GetName(), *GuidText(SubPinId));
						return false;
					}
					Pin->SubPins.Add(SubPin);
				}
				if (Pending.ParentPins[PinIndex].IsValid())
				{
					Pin->ParentPin = Node.FindPinById(Pending.ParentPins[PinIndex]);
					if (!Pin->ParentPin || Pin->ParentPin == Pin)
					{
						OutError = FString::Printf(TEXT("pin '%s' names a parent pin %s the node does not have"), *Pin->GetName(),
							*GuidText(Pending.ParentPins[PinIndex]));
						return false;
					}
				}
				for (const FString& Link : Pending.Links[PinIndex])
				{
					UEdGraphPin* Target = FindLinkTarget(Node, Link, OutError);
					if (!Target)
					{
						OutError = FString::Printf(TEXT("pin '%s': %s"), *Pin->GetName(), *OutError);
						return false;
					}
					if (Target->Direction == Pin->Direction || Pin->LinkedTo.Contains(Target))
					{
						OutError = FString::Printf(TEXT("pin '%s' has an impossible link to '%s'"), *Pin->GetName(), *Link);
						return false;
					}
					// Links are symmetric: the far pin lists this one too, resolved already or still pending.
					const FString BackLink = PinReferenceText(Pin);
					const FPendingNode* TargetPending = FindPending(Target->GetOwningNode());
					bool bListedBack = false;
					if (TargetPending && TargetPending != &Pending)
					{
						const int32 TargetIndex = Target->GetOwningNode()->Pins.Find(Target);
						bListedBack = TargetPending->Links[TargetIndex].Contains(BackLink);
					}
					else
					{
						bListedBack = Target->LinkedTo.Contains(Pin) || (TargetPending == &Pending && Pending.Links[Node.Pins.Find(Target)].Contains(BackLink));
					}
					if (!bListedBack)
					{
						OutError = FString::Printf(TEXT("pin '%s' is linked to '%s', which does not link back"), *Pin->GetName(), *Link);
						return false;
					}
					Pin->LinkedTo.Add(Target);
				}
			}
			return true;
		}

		static UEdGraphPin* FindLinkTarget(const UEdGraphNode& Node, const FString& Link, FString& OutError)
		{
			FString NodeName;
			FString PinIdText;
			FGuid PinId;
			if (!Link.Split(TEXT(" "), &NodeName, &PinIdText) || NodeName.IsEmpty() || !FGuid::ParseExact(PinIdText, EGuidFormats::Digits, PinId))
			{
				OutError = FString::Printf(TEXT("link '%s' is not \"<NodeName> <PinId>\""), *Link);
				return nullptr;
			}
			UEdGraphNode* TargetNode = Cast<UEdGraphNode>(StaticFindObjectFast(UEdGraphNode::StaticClass(), Node.GetOuter(), FName(*NodeName)));
			if (!TargetNode)
			{
				OutError = FString::Printf(TEXT("link '%s' names a node that is not in the graph"), *Link);
				return nullptr;
			}
			UEdGraphPin* Target = TargetNode->FindPinById(PinId);
			if (!Target)
			{
				OutError = FString::Printf(TEXT("link '%s' names a pin node '%s' does not have"), *Link, *NodeName);
				return nullptr;
			}
			return Target;
		}

		FPendingNode* FindPending(const UEdGraphNode* Node) const
		{
			FPendingNode* Pending = PendingNodes.Find(Node);
			// An entry left by a load that failed may belong to an earlier object at the same address.
			return Pending && Pending->Node.Get() == Node ? Pending : nullptr;
		}

		/** Nodes read but not yet resolved; only looked up, never iterated for anything observable. */
		mutable TMap<const UEdGraphNode*, FPendingNode> PendingNodes;
	};

	namespace
	{
		void RegisterGraphSerializers()
		{
			UE::Headless::FPackageSerializerRegistry::Get().Register(
				FTopLevelAssetPath(TEXT("/Script/Engine"), TEXT("EdGraphNode")), MakeShared<FEdGraphNodePackageSerializer>());
		}

		UE::CoreUObject::Private::FRegisterCompiledInCallback RegisterGraphSerializersCallback(&RegisterGraphSerializers);
	}
}
