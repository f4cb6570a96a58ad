// Actions for the members of classes and Blueprints: calls, events, variables and event dispatchers.

#include "BlueprintActionDatabaseFamilies.h"
#include "BlueprintActionDatabaseRegistrar.h"
#include "BlueprintBoundEventNodeSpawner.h"
#include "BlueprintDelegateNodeSpawner.h"
#include "BlueprintEventNodeSpawner.h"
#include "BlueprintFunctionNodeSpawner.h"
#include "BlueprintVariableNodeSpawner.h"
#include "Components/ActorComponent.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "K2Node_AddDelegate.h"
#include "K2Node_AssignDelegate.h"
#include "K2Node_CallDelegate.h"
#include "K2Node_ClearDelegate.h"
#include "K2Node_ClassDynamicCast.h"
#include "K2Node_ComponentBoundEvent.h"
#include "K2Node_DynamicCast.h"
#include "K2Node_Message.h"
#include "K2Node_RemoveDelegate.h"
#include "K2Node_VariableGet.h"
#include "K2Node_VariableSet.h"
#include "UObject/FieldIterator.h"
#include "UObject/Interface.h"
#include "UObject/UnrealType.h"

namespace UE::BlueprintGraph::ActionDatabase
{
	bool IsBlueprintMadeClass(const UClass* Class)
	{
		return Class && (Class->ClassGeneratedBy != nullptr || Class->HasAnyClassFlags(CLASS_CompiledFromBlueprint) || Class->GetName().StartsWith(TEXT("SKEL_")));
	}

	bool IsBlueprintTypeClass(const UClass* Class)
	{
		for (const UClass* Walk = Class; Walk; Walk = Walk->GetSuperClass())
		{
			if (Walk->HasMetaData(FBlueprintMetadata::MD_NotAllowableBlueprintVariableType))
			{
				return Walk->GetMetaData(FBlueprintMetadata::MD_NotAllowableBlueprintVariableType) == TEXT("false");
			}
			if (Walk->HasMetaData(FBlueprintMetadata::MD_AllowableBlueprintVariableType))
			{
				return Walk->GetMetaData(FBlueprintMetadata::MD_AllowableBlueprintVariableType) != TEXT("false");
			}
			if (Walk->GetMetaData(FBlueprintMetadata::MD_IsBlueprintBase) == TEXT("true"))
			{
				return true;
			}
		}
		return false;
	}

	namespace
	{
		void RegisterDelegateActions(const UObject* Key, const UClass* OwnerClass, FMulticastDelegateProperty* Property, FBlueprintActionDatabaseRegistrar& Registrar)
		{
			if (Property->HasAnyPropertyFlags(CPF_BlueprintAssignable))
			{
				// A component's delegate can also be listened to by an event bound to one component of a Blueprint.
				if (OwnerClass && OwnerClass->IsChildOf(UActorComponent::StaticClass()))
				{
					Registrar.AddBlueprintAction(Key, UBlueprintBoundEventNodeSpawner::Create(UK2Node_ComponentBoundEvent::StaticClass(), Property));
				}
				Registrar.AddBlueprintAction(Key, UBlueprintDelegateNodeSpawner::Create(UK2Node_AddDelegate::StaticClass(), Property));
				Registrar.AddBlueprintAction(Key, UBlueprintDelegateNodeSpawner::Create(UK2Node_AssignDelegate::StaticClass(), Property));
				Registrar.AddBlueprintAction(Key, UBlueprintDelegateNodeSpawner::Create(UK2Node_RemoveDelegate::StaticClass(), Property));
				Registrar.AddBlueprintAction(Key, UBlueprintDelegateNodeSpawner::Create(UK2Node_ClearDelegate::StaticClass(), Property));
			}
			if (Property->HasAnyPropertyFlags(CPF_BlueprintCallable))
			{
				Registrar.AddBlueprintAction(Key, UBlueprintDelegateNodeSpawner::Create(UK2Node_CallDelegate::StaticClass(), Property));
			}
		}

		/** Whether calls of the class's functions may also be sent as messages to any object. */
		bool CanClassSendMessages(const UClass* Class)
		{
			return Class && Class->HasAnyClassFlags(CLASS_Interface) && Class != UInterface::StaticClass()
				&& !Class->HasAnyClassFlags(CLASS_NewerVersionExists) && !Class->GetBoolMetaData(TEXT("CannotGenerateMessageNodes"));
		}

		/** "<Function> (Message)": the interface call that needs no cast, for a target that may not implement it. */
		UBlueprintNodeSpawner* MakeMessageNodeSpawner(UFunction* InterfaceFunction)
		{
			UBlueprintFunctionNodeSpawner* Spawner = UBlueprintFunctionNodeSpawner::Create(UK2Node_Message::StaticClass(), InterfaceFunction);
			if (Spawner)
			{
				Spawner->DefaultMenuSignature.MenuName = FText::Format(FText::FromString(TEXT("{0} (Message)")), Spawner->DefaultMenuSignature.MenuName);
			}
			return Spawner;
		}

		void RegisterFunctionActions(const UObject* Key, UClass* Class, FBlueprintActionDatabaseRegistrar& Registrar)
		{
			const bool bSendsMessages = CanClassSendMessages(Class);
			for (TFieldIterator<UFunction> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
			{
				UFunction* Function = *It;
				if (UEdGraphSchema_K2::CanUserKismetCallFunction(Function))
				{
					Registrar.AddBlueprintAction(Key, UBlueprintFunctionNodeSpawner::Create(Function));
					if (bSendsMessages)
					{
						Registrar.AddBlueprintAction(Key, MakeMessageNodeSpawner(Function));
					}
				}
				if (UEdGraphSchema_K2::FunctionCanBePlacedAsEvent(Function))
				{
					Registrar.AddBlueprintAction(Key, UBlueprintEventNodeSpawner::Create(Function));
				}
			}
		}
	}

	void RegisterClassMemberActions(UClass* Class, FBlueprintActionDatabaseRegistrar& Registrar)
	{
		if (!Class || !Registrar.IsOpenForRegistration(Class) || Class->HasAnyClassFlags(CLASS_NewerVersionExists))
		{
			return;
		}
		RegisterFunctionActions(Class, Class, Registrar);
		for (TFieldIterator<FProperty> It(Class, EFieldIteratorFlags::ExcludeSuper); It; ++It)
		{
			FProperty* Property = *It;
			if (FMulticastDelegateProperty* Delegate = CastField<FMulticastDelegateProperty>(Property))
			{
				RegisterDelegateActions(Class, Class, Delegate, Registrar);
				continue;
			}
			if (!Property->HasAnyPropertyFlags(CPF_BlueprintVisible) || Property->HasAnyPropertyFlags(CPF_Deprecated))
			{
				continue;
			}
			Registrar.AddBlueprintAction(Class, UBlueprintVariableNodeSpawner::CreateFromMemberOrParam(UK2Node_VariableGet::StaticClass(), Property, nullptr, Class));
			if (!Property->HasAnyPropertyFlags(CPF_BlueprintReadOnly))
			{
				Registrar.AddBlueprintAction(Class, UBlueprintVariableNodeSpawner::CreateFromMemberOrParam(UK2Node_VariableSet::StaticClass(), Property, nullptr, Class));
			}
		}
	}

	void RegisterBlueprintActions(UBlueprint* Blueprint, FBlueprintActionDatabaseRegistrar& Registrar)
	{
		if (!Blueprint || !Registrar.IsOpenForRegistration(Blueprint))
		{
			return;
		}
		// Variables as declared, so they are offered before the next compile.
		for (const FBPVariableDescription& Var : Blueprint->NewVariables)
		{
			// A variable of a multicast delegate type is an event dispatcher: it is bound and called, not read.
			if (Var.VarType.PinCategory == UEdGraphSchema_K2::PC_MCDelegate)
			{
				continue;
			}
			Registrar.AddBlueprintAction(Blueprint, UBlueprintVariableNodeSpawner::CreateFromBlueprintVariable(UK2Node_VariableGet::StaticClass(), Blueprint, Var));
			if ((Var.PropertyFlags & CPF_BlueprintReadOnly) == 0)
			{
				Registrar.AddBlueprintAction(Blueprint, UBlueprintVariableNodeSpawner::CreateFromBlueprintVariable(UK2Node_VariableSet::StaticClass(), Blueprint, Var));
			}
		}
		// Each component of the construction script is a variable the graphs can read.
		if (USimpleConstructionScript* SCS = Blueprint->SimpleConstructionScript.Get())
		{
			for (USCS_Node* Node : SCS->GetAllNodes())
			{
				if (!Node || Node->GetVariableName().IsNone() || !Node->ComponentClass.Get())
				{
					continue;
				}
				FBPVariableDescription ComponentVar;
				ComponentVar.VarName = Node->GetVariableName();
				ComponentVar.VarGuid = Node->VariableGuid;
				ComponentVar.VarType.PinCategory = UEdGraphSchema_K2::PC_Object;
				ComponentVar.VarType.PinSubCategoryObject = Node->ComponentClass.Get();
				ComponentVar.Category = FText::FromString(TEXT("Components"));
				Registrar.AddBlueprintAction(Blueprint, UBlueprintVariableNodeSpawner::CreateFromBlueprintVariable(UK2Node_VariableGet::StaticClass(), Blueprint, ComponentVar));
			}
		}
		// Functions and dispatchers exist once the compiler has made the Blueprint's class.
		if (UClass* Skeleton = Blueprint->SkeletonGeneratedClass.Get())
		{
			RegisterFunctionActions(Blueprint, Skeleton, Registrar);
			for (TFieldIterator<FMulticastDelegateProperty> It(Skeleton, EFieldIteratorFlags::ExcludeSuper); It; ++It)
			{
				RegisterDelegateActions(Blueprint, Skeleton, *It, Registrar);
			}
		}
		if (UClass* Generated = Blueprint->GeneratedClass.Get())
		{
			if (Blueprint->BlueprintType != BPTYPE_FunctionLibrary && Blueprint->BlueprintType != BPTYPE_MacroLibrary)
			{
				auto SetTarget = [Generated](UEdGraphNode* NewNode, bool)
				{
					if (UK2Node_DynamicCast* Cast = ::Cast<UK2Node_DynamicCast>(NewNode))
					{
						Cast->TargetType = Generated;
					}
				};
				Registrar.AddBlueprintAction(Blueprint, UBlueprintNodeSpawner::Create(UK2Node_DynamicCast::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetTarget)));
				Registrar.AddBlueprintAction(Blueprint, UBlueprintNodeSpawner::Create(UK2Node_ClassDynamicCast::StaticClass(), nullptr, UBlueprintNodeSpawner::FCustomizeNodeDelegate::CreateLambda(SetTarget)));
			}
		}
	}
}
