#include "SubobjectDataSubsystem.h"

#include "Components/ActorComponent.h"
#include "Components/SceneComponent.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "GameFramework/Actor.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/Kismet2NameValidators.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "UObject/UObjectGlobals.h"

IMPLEMENT_CLASS(USubobjectDataSubsystem)

const FSubobjectDataHandle FSubobjectDataHandle::InvalidHandle;

// FSubobjectData

FSubobjectData::FSubobjectData() = default;

const UObject* FSubobjectData::GetObject() const
{
	return GetMutableObject();
}

UObject* FSubobjectData::GetMutableObject() const
{
	if (const USCS_Node* Node = SCSNode.Get())
	{
		return Node->ComponentTemplate;
	}
	return Object.Get();
}

FName FSubobjectData::GetVariableName() const
{
	if (const USCS_Node* Node = SCSNode.Get())
	{
		return Node->GetVariableName();
	}
	return bIsActor ? NAME_None : NativeVariableName;
}

FText FSubobjectData::GetDisplayName() const
{
	if (bIsActor)
	{
		const UBlueprint* BP = Blueprint.Get();
		return FText::FromString(BP ? FString::Printf(TEXT("%s (Self)"), *BP->GetName()) : FString(TEXT("(Self)")));
	}
	return FText::FromString(GetVariableName().ToString());
}

bool FSubobjectData::IsComponent() const
{
	return Cast<UActorComponent>(GetObject()) != nullptr;
}

bool FSubobjectData::IsSceneComponent() const
{
	return Cast<USceneComponent>(GetObject()) != nullptr;
}

// USubobjectDataSubsystem

namespace
{
	UObject* GetActorDefaultObject(UBlueprint* Blueprint)
	{
		UClass* Class = Blueprint->GeneratedClass ? Blueprint->GeneratedClass.Get() : Blueprint->ParentClass.Get();
		return Class ? Class->GetDefaultObject() : nullptr;
	}

	void MarkModified(UBlueprint* Blueprint, bool bSkip = false)
	{
		if (Blueprint && !bSkip)
		{
			FBlueprintEditorUtils::MarkBlueprintAsStructurallyModified(Blueprint);
		}
	}

	/** Detaches the node from whatever holds it (the root list or a parent node), keeping its own children. */
	void DetachNode(USimpleConstructionScript* SCS, USCS_Node* Node)
	{
		if (USCS_Node* Parent = SCS->FindParentNode(Node))
		{
			Parent->RemoveChildNode(Node, false);
		}
		else
		{
			SCS->RootNodes.Remove(Node);
		}
	}
}

USubobjectDataSubsystem* USubobjectDataSubsystem::Get()
{
	static USubobjectDataSubsystem* Instance = []
	{
		USubobjectDataSubsystem* New = NewObject<USubobjectDataSubsystem>(GetTransientPackage(), TEXT("SubobjectDataSubsystem"));
		New->AddToRoot();
		return New;
	}();
	return Instance;
}

FSubobjectDataHandle USubobjectDataSubsystem::MakeHandle(const FSubobjectDataHandle& Parent, UObject* Object)
{
	TSharedPtr<FSubobjectData> Data = MakeShared<FSubobjectData>();
	FSubobjectDataHandle Handle(Data);
	Data->Handle = Handle;
	Data->ParentHandle = Parent;
	Data->Object = Object;
	if (FSubobjectData* ParentData = Parent.GetData())
	{
		ParentData->ChildrenHandles.Add(Handle);
		Data->Blueprint = ParentData->Blueprint;
	}
	return Handle;
}

void USubobjectDataSubsystem::GatherNodes(const FSubobjectDataHandle& Parent, const TArray<USCS_Node*>& Nodes, UBlueprint* Blueprint, TArray<FSubobjectDataHandle>& Out)
{
	for (USCS_Node* Node : Nodes)
	{
		if (!Node)
		{
			continue;
		}
		FSubobjectDataHandle Handle = MakeHandle(Parent, Node->ComponentTemplate);
		Handle.GetData()->SCSNode = Node;
		Handle.GetData()->Blueprint = Blueprint;
		Out.Add(Handle);
		GatherNodes(Handle, Node->GetChildNodes(), Blueprint, Out);
	}
}

void USubobjectDataSubsystem::K2_GatherSubobjectDataForBlueprint(UBlueprint* Context, TArray<FSubobjectDataHandle>& OutDataHandles)
{
	OutDataHandles.Reset();
	if (!Context)
	{
		return;
	}
	UObject* ActorObject = GetActorDefaultObject(Context);
	FSubobjectDataHandle ActorHandle = MakeHandle(FSubobjectDataHandle(), ActorObject);
	ActorHandle.GetData()->bIsActor = true;
	ActorHandle.GetData()->Blueprint = Context;
	OutDataHandles.Add(ActorHandle);

	// Native components: the component-valued properties the parent class fills in its default object.
	FSubobjectDataHandle RootHandle;
	TMap<FName, FSubobjectDataHandle> NativeByName;
	if (UClass* ParentClass = Context->ParentClass; ParentClass && ActorObject)
	{
		for (TFieldIterator<FObjectProperty> It(ParentClass); It; ++It)
		{
			FObjectProperty* Property = *It;
			if (!Property->PropertyClass || !Property->PropertyClass->IsChildOf(UActorComponent::StaticClass()))
			{
				continue;
			}
			UObject* Component = Property->GetObjectPropertyValue(Property->ContainerPtrToValuePtr<void>(ActorObject));
			if (!Component)
			{
				continue;
			}
			const bool bScene = Component->IsA<USceneComponent>();
			FSubobjectDataHandle Handle = MakeHandle(bScene && RootHandle.IsValid() ? RootHandle : ActorHandle, Component);
			Handle.GetData()->bIsNative = true;
			Handle.GetData()->NativeVariableName = Property->GetFName();
			if (bScene && !RootHandle.IsValid())
			{
				Handle.GetData()->bIsRootComponent = true;
				RootHandle = Handle;
			}
			NativeByName.Add(Property->GetFName(), Handle);
			OutDataHandles.Add(Handle);
		}
	}

	USimpleConstructionScript* SCS = Context->SimpleConstructionScript;
	if (!SCS)
	{
		return;
	}
	for (USCS_Node* Root : SCS->GetRootNodes())
	{
		if (!Root)
		{
			continue;
		}
		const bool bScene = Root->ComponentTemplate && Root->ComponentTemplate->IsA<USceneComponent>();
		FSubobjectDataHandle Parent = ActorHandle;
		if (bScene)
		{
			const FSubobjectDataHandle* Named = Root->bIsParentComponentNative ? NativeByName.Find(Root->ParentComponentOrVariableName) : nullptr;
			Parent = Named ? *Named : (RootHandle.IsValid() ? RootHandle : ActorHandle);
		}
		const int32 First = OutDataHandles.Num();
		TArray<USCS_Node*> One;
		One.Add(Root);
		GatherNodes(Parent, One, Context, OutDataHandles);
		if (bScene && !RootHandle.IsValid())
		{
			// Without a native root, the first scene component of the script is the actor's root.
			RootHandle = OutDataHandles[First];
			RootHandle.GetData()->bIsRootComponent = true;
		}
	}
}

void USubobjectDataSubsystem::GatherSubobjectData(UObject* Context, TArray<FSubobjectDataHandle>& OutArray)
{
	if (UBlueprint* Blueprint = Cast<UBlueprint>(Context))
	{
		K2_GatherSubobjectDataForBlueprint(Blueprint, OutArray);
		return;
	}
	if (UClass* Class = Context ? Context->GetClass() : nullptr)
	{
		if (UBlueprint* Blueprint = Cast<UBlueprint>(Class->ClassGeneratedBy))
		{
			K2_GatherSubobjectDataForBlueprint(Blueprint, OutArray);
			return;
		}
	}
	OutArray.Reset();
}

FSubobjectDataHandle USubobjectDataSubsystem::FindHandleForObject(const FSubobjectDataHandle& Context, const UObject* ObjectToFind, UBlueprint* BPContext) const
{
	const FSubobjectData* Data = Context.GetData();
	if (!Data || !ObjectToFind)
	{
		return FSubobjectDataHandle();
	}
	// Search from the top of the context's tree, so any handle of a gather finds any other.
	FSubobjectDataHandle Top = Context;
	while (Top.GetData()->GetParentHandle().IsValid())
	{
		Top = Top.GetData()->GetParentHandle();
	}
	TArray<FSubobjectDataHandle> Pending;
	Pending.Add(Top);
	while (Pending.Num() > 0)
	{
		const FSubobjectDataHandle Handle = Pending[0];
		Pending.RemoveAt(0);
		const FSubobjectData* Current = Handle.GetData();
		if (Current->GetObject() == ObjectToFind)
		{
			return Handle;
		}
		Pending.Append(Current->GetChildrenHandles());
	}
	return FSubobjectDataHandle();
}

bool USubobjectDataSubsystem::K2_FindSubobjectDataFromHandle(const FSubobjectDataHandle& Handle, FSubobjectData& OutData)
{
	if (const FSubobjectData* Data = Handle.GetData())
	{
		OutData = *Data;
		return true;
	}
	return false;
}

bool USubobjectDataSubsystem::IsAncestorOf(const FSubobjectDataHandle& Ancestor, const FSubobjectDataHandle& Handle) const
{
	for (FSubobjectDataHandle Walk = Handle; Walk.IsValid(); Walk = Walk.GetData()->GetParentHandle())
	{
		if (Walk == Ancestor)
		{
			return true;
		}
	}
	return false;
}

bool USubobjectDataSubsystem::ReparentSubobjects(const FReparentSubobjectParams& Params, const TArray<FSubobjectDataHandle>& HandlesToMove)
{
	FSubobjectData* NewParent = Params.NewParentHandle.GetData();
	UBlueprint* Blueprint = Params.BlueprintContext ? Params.BlueprintContext : (NewParent ? NewParent->GetBlueprint() : nullptr);
	USimpleConstructionScript* SCS = Blueprint ? Blueprint->SimpleConstructionScript.Get() : nullptr;
	if (!NewParent || !SCS || !NewParent->IsSceneComponent() || HandlesToMove.Num() == 0)
	{
		return false;
	}
	// All or nothing: check every handle before moving any.
	for (const FSubobjectDataHandle& Handle : HandlesToMove)
	{
		const FSubobjectData* Data = Handle.GetData();
		if (!Data || !Data->CanReparent() || IsAncestorOf(Handle, Params.NewParentHandle))
		{
			return false;
		}
	}
	for (const FSubobjectDataHandle& Handle : HandlesToMove)
	{
		FSubobjectData* Data = Handle.GetData();
		USCS_Node* Node = Data->GetSCSNode();
		DetachNode(SCS, Node);
		if (USCS_Node* ParentNode = NewParent->GetSCSNode())
		{
			ParentNode->AddChildNode(Node, false);
		}
		else
		{
			SCS->RootNodes.Add(Node);
			Node->SetParent(NewParent->GetVariableName(), Blueprint->ParentClass ? Blueprint->ParentClass->GetFName() : NAME_None, NewParent->IsNativeComponent());
		}
		if (FSubobjectData* OldParent = Data->ParentHandle.GetData())
		{
			OldParent->ChildrenHandles.Remove(Handle);
		}
		Data->ParentHandle = Params.NewParentHandle;
		NewParent->ChildrenHandles.Add(Handle);
	}
	SCS->ValidateNodeTree();
	MarkModified(Blueprint);
	return true;
}

FSubobjectDataHandle USubobjectDataSubsystem::AddNewSubobject(const FAddNewSubobjectParams& Params, FText& FailReason)
{
	UBlueprint* Blueprint = Params.BlueprintContext;
	USimpleConstructionScript* SCS = Blueprint ? Blueprint->SimpleConstructionScript.Get() : nullptr;
	FSubobjectData* Parent = Params.ParentHandle.GetData();
	if (!SCS || !Parent)
	{
		FailReason = FText::FromString(TEXT("Components can only be added to a Blueprint with a construction script."));
		return FSubobjectDataHandle();
	}
	if (!Params.NewClass || !Params.NewClass->IsChildOf(UActorComponent::StaticClass()) || Params.NewClass->HasAnyClassFlags(CLASS_Abstract))
	{
		FailReason = FText::FromString(TEXT("The class is not a component class that can be added."));
		return FSubobjectDataHandle();
	}
	USCS_Node* Node = SCS->CreateNode(Params.NewClass, SCS->GenerateNewComponentName(Params.NewClass));
	if (!Node)
	{
		FailReason = FText::FromString(TEXT("The component could not be created."));
		return FSubobjectDataHandle();
	}
	const bool bScene = Node->ComponentTemplate && Node->ComponentTemplate->IsA<USceneComponent>();
	FSubobjectDataHandle ParentHandle = Params.ParentHandle;
	if (bScene && Parent->IsActor())
	{
		// A scene component added to the actor goes under the root, as the panel adds it.
		for (const FSubobjectDataHandle& Child : Parent->GetChildrenHandles())
		{
			if (Child.GetData()->IsRootComponent())
			{
				ParentHandle = Child;
				break;
			}
		}
	}
	FSubobjectData* ParentData = ParentHandle.GetData();
	if (!bScene || ParentData->IsActor())
	{
		SCS->AddNode(Node);
	}
	else if (USCS_Node* ParentNode = ParentData->GetSCSNode())
	{
		ParentNode->AddChildNode(Node);
	}
	else
	{
		SCS->AddNode(Node);
		Node->SetParent(ParentData->GetVariableName(), Blueprint->ParentClass ? Blueprint->ParentClass->GetFName() : NAME_None, true);
	}
	FSubobjectDataHandle Handle = MakeHandle(ParentHandle, Node->ComponentTemplate);
	Handle.GetData()->SCSNode = Node;
	Handle.GetData()->Blueprint = Blueprint;
	MarkModified(Blueprint, Params.bSkipMarkBlueprintModified);
	return Handle;
}

int32 USubobjectDataSubsystem::DeleteSubobjects(const FSubobjectDataHandle& ContextHandle, const TArray<FSubobjectDataHandle>& SubobjectsToDelete, UBlueprint* BPContext)
{
	int32 Deleted = 0;
	UBlueprint* Blueprint = BPContext;
	for (const FSubobjectDataHandle& Handle : SubobjectsToDelete)
	{
		FSubobjectData* Data = Handle.GetData();
		if (!Data || !Data->CanDelete())
		{
			continue;
		}
		Blueprint = Blueprint ? Blueprint : Data->GetBlueprint();
		USimpleConstructionScript* SCS = Blueprint ? Blueprint->SimpleConstructionScript.Get() : nullptr;
		if (!SCS)
		{
			continue;
		}
		SCS->RemoveNodeAndPromoteChildren(Data->GetSCSNode());
		if (FSubobjectData* Parent = Data->ParentHandle.GetData())
		{
			Parent->ChildrenHandles.Remove(Handle);
			for (const FSubobjectDataHandle& Child : Data->ChildrenHandles)
			{
				Child.GetData()->ParentHandle = Data->ParentHandle;
				Parent->ChildrenHandles.Add(Child);
			}
		}
		Data->ChildrenHandles.Reset();
		++Deleted;
	}
	if (Deleted > 0)
	{
		MarkModified(Blueprint);
	}
	return Deleted;
}

bool USubobjectDataSubsystem::RenameSubobject(const FSubobjectDataHandle& Handle, const FText& InNewName)
{
	FSubobjectData* Data = Handle.GetData();
	if (!Data || !Data->CanRename())
	{
		return false;
	}
	UBlueprint* Blueprint = Data->GetBlueprint();
	USCS_Node* Node = Data->GetSCSNode();
	const FString NewName = InNewName.ToString();
	if (!Blueprint || NewName.IsEmpty())
	{
		return false;
	}
	FKismetNameValidator Validator(Blueprint, Node->GetVariableName());
	if (Validator.IsValid(NewName) != EValidatorResult::Ok)
	{
		return false;
	}
	Node->SetVariableName(FName(*NewName));
	MarkModified(Blueprint);
	return true;
}
