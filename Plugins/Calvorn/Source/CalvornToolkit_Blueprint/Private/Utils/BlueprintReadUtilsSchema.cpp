#include "BlueprintReadUtils.h"
#include "BlueprintReadUtilsPrivate.h"

#include "AssetOperationBase.h"
#include "BlueprintUtils.h"
#include "Components/ActorComponent.h"
#include "Components/SceneComponent.h"
#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/SCS_Node.h"
#include "Engine/SimpleConstructionScript.h"
#include "Engine/TimelineTemplate.h"
#include "GameFramework/Actor.h"
#include "Serialization/JsonSerializer.h"
#include "ToolInfo.h"
#include "ToolResult.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"
#include "UObject/FieldIterator.h"
#include "UObject/UObjectHash.h"

using namespace UE::CalvornBlueprint::ReadPrivate;
namespace ToolInfo = Calvorn::ToolInfo;

namespace
{
	// Property flag bits the variable entries report, as the compiled property and the description store them.
	constexpr uint64 ListedVariableFlags = CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly;
	// Functions a Blueprint can call or implement: callable, event, pure.
	constexpr uint32 ListedFunctionFlags = FUNC_BlueprintCallable | FUNC_BlueprintEvent | FUNC_BlueprintPure;

	/** Names a read asked for, each with how many listed items matched it. Empty means "list everything". */
	struct FItemRequest
	{
		TMap<FString, int32> Counts;

		bool IsFiltering() const { return Counts.Num() > 0; }

		/** Whether an item of that name is to be listed; a listed match is counted. */
		bool Accept(const FString& Name)
		{
			if (!IsFiltering())
			{
				return true;
			}
			int32* Count = Counts.Find(Name);
			if (!Count)
			{
				return false;
			}
			++*Count;
			return true;
		}

		/** Whether the name is asked for, without counting it. */
		bool Wants(const FString& Name) const
		{
			return !IsFiltering() || Counts.Contains(Name);
		}

		/** A status entry after the items for each name nothing matched. */
		void AppendStatusEntries(TArray<TSharedPtr<FJsonValue>>& Items, bool bFinalizeRead) const
		{
			for (const TPair<FString, int32>& Requested : Counts)
			{
				if (Requested.Value < 1)
				{
					TSharedPtr<FJsonObject> Status = MakeShared<FJsonObject>();
					Status->SetStringField(TEXT("name"), Requested.Key);
					Status->SetStringField(TEXT("status"), GetMissingStatusWord(bFinalizeRead));
					Items.Add(MakeValue(Status));
				}
			}
		}
	};

	/** What one read of a Blueprint carries from section to section. */
	struct FReadContext
	{
		TSharedPtr<FJsonObject> Options;
		FString ReadTool;
		bool bSchemaRead = false;
		bool bFinalizeRead = false;
		UBlueprint* Blueprint = nullptr;
		UBlueprintGeneratedClass* GeneratedClass = nullptr;
		Calvorn::FToolResult* Result = nullptr;

		bool IsTool(const TCHAR* ToolName) const { return ReadTool.Equals(ToolName, ESearchCase::IgnoreCase); }
		/** Whether the section of the item tool ToolName is written by this read. */
		bool TakesSection(const TCHAR* ToolName) const { return bSchemaRead || IsTool(ToolName); }
	};

	/**
	 * The request map of the read's own item tool. Only the array under FilterField counts, and only its
	 * string values; a present array that names nothing is refused, since an item tool asked for nothing
	 * is a client mistake rather than a request for everything.
	 */
	bool MakeItemRequest(const FReadContext& Context, const TCHAR* ToolName, const TCHAR* FilterField, FItemRequest& OutRequest)
	{
		if (!Context.IsTool(ToolName))
		{
			return true;
		}
		const TSharedPtr<FJsonValue> Field = Context.Options->TryGetField(FilterField);
		if (!Field.IsValid())
		{
			return true;
		}
		if (Field->Type == EJson::Array)
		{
			for (const TSharedPtr<FJsonValue>& Value : Field->AsArray())
			{
				if (Value.IsValid() && Value->Type == EJson::String)
				{
					OutRequest.Counts.FindOrAdd(Value->AsString(), 0);
				}
			}
		}
		if (!OutRequest.IsFiltering())
		{
			Context.Result->AddErrorMessage(FString::Printf(TEXT("Field '%s' array is empty"), FilterField));
			return false;
		}
		return true;
	}

	TSharedPtr<FJsonObject> PropertyPinTypeToJson(const FProperty* Property)
	{
		FEdGraphPinType PinType;
		FAssetOperationBase::ConvertPropertyToEdGraphPinType(Property, PinType);
		return PinTypeToJson(PinType);
	}

	// ---- Parent class ----------------------------------------------------------------------------

	TSharedPtr<FJsonValue> ReadParentClass(const UBlueprint& Blueprint)
	{
		const UClass* ParentClass = Blueprint.ParentClass;
		if (!ParentClass)
		{
			return MakeShared<FJsonValueNull>();
		}
		TSharedPtr<FJsonObject> Parent = MakeShared<FJsonObject>();
		if (ParentClass->IsA<UBlueprintGeneratedClass>())
		{
			// A client names Blueprints by asset, so the generated class's "_C" is dropped.
			FString Name = ParentClass->GetName();
			if (Name.EndsWith(TEXT("_C"), ESearchCase::IgnoreCase))
			{
				Name.LeftChopInline(2);
			}
			Parent->SetStringField(TEXT("type"), TEXT("blueprint"));
			Parent->SetStringField(TEXT("name"), Name);
		}
		else
		{
			Parent->SetStringField(TEXT("type"), TEXT("native"));
			Parent->SetStringField(TEXT("name"), ParentClass->GetStructPathName().ToString());
		}
		return MakeShared<FJsonValueObject>(Parent);
	}

	// ---- Interfaces ------------------------------------------------------------------------------

	bool ReadInterfaces(FReadContext& Context, FJsonObject& Document)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolInfo::ToolName_ReadBlueprintInterface, ToolInfo::FieldName_InterfaceName, Request))
		{
			return false;
		}
		TArray<TSharedPtr<FJsonValue>> Items;
		for (const FBPInterfaceDescription& Description : Context.Blueprint->ImplementedInterfaces)
		{
			const UClass* InterfaceClass = Description.Interface;
			if (!InterfaceClass || !Request.Accept(InterfaceClass->GetName()))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), InterfaceClass->GetName());
			Entry->SetStringField(TEXT("class"), InterfaceClass->GetPathName());
			TArray<TSharedPtr<FJsonValue>> Graphs;
			for (const UEdGraph* Graph : Description.Graphs)
			{
				if (Graph)
				{
					Graphs.Add(MakeValue(FBlueprintReadUtils::ReadEdGraph(Graph, Context.Options)));
				}
			}
			Entry->SetArrayField(TEXT("graphs"), MoveTemp(Graphs));
			Items.Add(MakeValue(Entry));
		}
		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		if (Items.Num() > 0)
		{
			Document.SetArrayField(TEXT("interfaces"), MoveTemp(Items));
		}
		return true;
	}

	// ---- Variables -------------------------------------------------------------------------------

	const FBPVariableDescription* FindVariableDescription(const UBlueprint& Blueprint, const FString& Name)
	{
		for (const FBPVariableDescription& Description : Blueprint.NewVariables)
		{
			if (Description.VarName.ToString().Equals(Name, ESearchCase::IgnoreCase))
			{
				return &Description;
			}
		}
		return nullptr;
	}

	/** A true-or-false metadata value, written only when the description carries the key. */
	void WriteMetaDataBool(FJsonObject& Entry, const TCHAR* Key, const FBPVariableDescription& Description, const FName MetaDataKey)
	{
		if (Description.HasMetaData(MetaDataKey))
		{
			Entry.SetBoolField(Key, Description.GetMetaData(MetaDataKey).Equals(TEXT("true"), ESearchCase::IgnoreCase));
		}
	}

	/**
	 * The keys that need the variable's description. Replication, save and config come from the flags the
	 * class was compiled with (CompiledFlags); editability and read-only-ness from the description, which is
	 * what the user last set.
	 */
	void WriteVariableDescription(FJsonObject& Entry, const FBPVariableDescription& Description, uint64 CompiledFlags)
	{
		TSharedPtr<FJsonObject> Replication = MakeShared<FJsonObject>();
		if (!(CompiledFlags & CPF_Net))
		{
			Replication->SetStringField(TEXT("mode"), TEXT("none"));
		}
		else if (CompiledFlags & CPF_RepNotify)
		{
			Replication->SetStringField(TEXT("mode"), TEXT("rep_notify"));
			if (!Description.RepNotifyFunc.IsNone())
			{
				Replication->SetStringField(TEXT("notify_function"), Description.RepNotifyFunc.ToString());
			}
		}
		else
		{
			Replication->SetStringField(TEXT("mode"), TEXT("replicated"));
		}
		Entry.SetObjectField(TEXT("replication"), Replication);

		const FString Category = Description.Category.ToString();
		if (!Category.IsEmpty())
		{
			Entry.SetStringField(TEXT("category"), Category);
		}
		if (Description.HasMetaData(FBlueprintMetadata::MD_Tooltip))
		{
			const FString Tooltip = Description.GetMetaData(FBlueprintMetadata::MD_Tooltip);
			if (!Tooltip.IsEmpty())
			{
				Entry.SetStringField(TEXT("tooltip"), Tooltip);
			}
		}
		Entry.SetBoolField(TEXT("instance_editable"), !(Description.PropertyFlags & CPF_DisableEditOnInstance));
		WriteMetaDataBool(Entry, TEXT("expose_on_spawn"), Description, FBlueprintMetadata::MD_ExposeOnSpawn);
		WriteMetaDataBool(Entry, TEXT("private"), Description, FBlueprintMetadata::MD_Private);
		Entry.SetBoolField(TEXT("save_game"), (CompiledFlags & CPF_SaveGame) != 0);
		Entry.SetBoolField(TEXT("blueprint_read_only"), (Description.PropertyFlags & CPF_BlueprintReadOnly) != 0);
		Entry.SetBoolField(TEXT("config"), (CompiledFlags & CPF_Config) != 0);
	}

	/** The variable names the construction script's components take; those are listed as components. */
	TSet<FString> GetComponentVariableNames(UBlueprint* Blueprint)
	{
		TSet<FString> Names;
		for (const USCS_Node* Node : FBlueprintUtils::GetBlueprintComponentsFromSCS(Blueprint))
		{
			if (Node)
			{
				Names.Add(Node->GetVariableName().ToString());
			}
		}
		return Names;
	}

	bool ReadVariables(FReadContext& Context, FJsonObject& Document)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolInfo::ToolName_ReadBlueprintVariable, ToolInfo::FieldName_VariableName, Request))
		{
			return false;
		}
		const bool bVariableTool = Context.IsTool(ToolInfo::ToolName_ReadBlueprintVariable);
		const TSet<FString> ComponentNames = GetComponentVariableNames(Context.Blueprint);
		const UObject* DefaultObject = Context.GeneratedClass->GetDefaultObject();

		TArray<TSharedPtr<FJsonValue>> Items;
		TSet<FString> ListedNames;

		// Compiled variables first, inherited ones included, in the class's own order.
		for (TFieldIterator<FProperty> It(Context.GeneratedClass); It; ++It)
		{
			const FProperty* Property = *It;
			const FString Name = Property->GetName();
			if (ComponentNames.Contains(Name) || !Request.Wants(Name) || !(Property->GetPropertyFlags() & ListedVariableFlags))
			{
				continue;
			}
			Request.Accept(Name);
			ListedNames.Add(Name);

			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Name);
			Entry->SetObjectField(TEXT("type"), PropertyPinTypeToJson(Property));
			if (bVariableTool)
			{
				FString DefaultValue;
				FAssetOperationBase::GetPropertyValueAsString(DefaultObject, Property, DefaultValue);
				Entry->SetStringField(TEXT("default_variable_value"), DefaultValue);
			}
			if (const FBPVariableDescription* Description = FindVariableDescription(*Context.Blueprint, Name))
			{
				WriteVariableDescription(*Entry, *Description, Property->GetPropertyFlags());
			}
			Items.Add(MakeValue(Entry));
		}

		// Then those added since the last compile, which only their descriptions know.
		for (const FBPVariableDescription& Description : Context.Blueprint->NewVariables)
		{
			const FString Name = Description.VarName.ToString();
			if (ListedNames.Contains(Name) || !Request.Accept(Name))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Name);
			Entry->SetObjectField(TEXT("type"), PinTypeToJson(Description.VarType));
			if (bVariableTool)
			{
				Entry->SetStringField(TEXT("default_variable_value"), Description.DefaultValue);
			}
			WriteVariableDescription(*Entry, Description, Description.PropertyFlags);
			Items.Add(MakeValue(Entry));
		}

		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		Document.SetArrayField(TEXT("variables"), MoveTemp(Items));
		return true;
	}

	// ---- Components ------------------------------------------------------------------------------

	/** The class default object's own components: what the parent classes create, child actors aside. */
	TArray<UActorComponent*> GetNativeComponents(const UBlueprintGeneratedClass& GeneratedClass)
	{
		TArray<UActorComponent*> Components;
		const UObject* DefaultObject = GeneratedClass.GetDefaultObject();
		if (!DefaultObject)
		{
			return Components;
		}
		const UClass* ChildActorClass = FindObject<UClass>(nullptr, TEXT("/Script/Engine.ChildActorComponent"));
		TArray<UObject*> Subobjects;
		GetObjectsWithOuter(DefaultObject, Subobjects, false);
		for (UObject* Subobject : Subobjects)
		{
			UActorComponent* Component = Cast<UActorComponent>(Subobject);
			if (Component && !(ChildActorClass && Component->IsA(ChildActorClass)))
			{
				Components.Add(Component);
			}
		}
		return Components;
	}

	/** The component's active flag, which templates carry as a reflected member when their class has it. */
	bool IsComponentActive(const UActorComponent& Component)
	{
		const FBoolProperty* ActiveProperty = CastField<FBoolProperty>(Component.GetClass()->FindPropertyByName(TEXT("bIsActive")));
		return ActiveProperty && ActiveProperty->GetPropertyValue_InContainer(&Component);
	}

	TSharedPtr<FJsonObject> ReadComponent(const FString& Name, const UActorComponent& Component, bool bComponentTool)
	{
		TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
		Entry->SetStringField(TEXT("name"), Name);
		Entry->SetStringField(TEXT("class_name"), Component.GetClass()->GetName());
		if (!bComponentTool)
		{
			return Entry;
		}
		const USceneComponent* SceneComponent = Cast<USceneComponent>(&Component);
		Entry->SetStringField(TEXT("display_name"), Component.GetClass()->GetDisplayNameText().ToString());
		Entry->SetStringField(TEXT("group_name"), Component.GetFullGroupName(false));
		Entry->SetBoolField(TEXT("is_scene_component"), SceneComponent != nullptr);
		Entry->SetBoolField(TEXT("is_editor_only"), Component.IsEditorOnly());
		Entry->SetBoolField(TEXT("is_active"), IsComponentActive(Component));
		if (!SceneComponent)
		{
			return Entry;
		}
		if (const USceneComponent* Parent = SceneComponent->GetAttachParent())
		{
			Entry->SetStringField(TEXT("parent_component"), Parent->GetName());
			Entry->SetStringField(TEXT("attach_socket"), SceneComponent->GetAttachSocketName().ToString());
		}
		TArray<TSharedPtr<FJsonValue>> Children;
		for (const USceneComponent* Child : SceneComponent->GetAttachChildren())
		{
			if (Child)
			{
				Children.Add(MakeValue(Child->GetName()));
			}
		}
		if (Children.Num() > 0)
		{
			Entry->SetArrayField(TEXT("children"), MoveTemp(Children));
		}
		return Entry;
	}

	bool ReadComponents(FReadContext& Context, FJsonObject& Document)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolInfo::ToolName_ReadBlueprintComponent, ToolInfo::FieldName_ComponentName, Request))
		{
			return false;
		}
		const bool bComponentTool = Context.IsTool(ToolInfo::ToolName_ReadBlueprintComponent);
		TArray<TSharedPtr<FJsonValue>> Items;
		if (Context.GeneratedClass->IsChildOf(AActor::StaticClass()))
		{
			for (const UActorComponent* Component : GetNativeComponents(*Context.GeneratedClass))
			{
				if (Request.Accept(Component->GetName()))
				{
					Items.Add(MakeValue(ReadComponent(Component->GetName(), *Component, bComponentTool)));
				}
			}
			for (const USCS_Node* Node : FBlueprintUtils::GetBlueprintComponentsFromSCS(Context.Blueprint))
			{
				const UActorComponent* Template = Node ? Node->GetActualComponentTemplate(Context.GeneratedClass) : nullptr;
				if (Node && !Template)
				{
					Template = Node->ComponentTemplate;
				}
				if (!Template)
				{
					continue;
				}
				const FString Name = Node->GetVariableName().ToString();
				if (Request.Accept(Name))
				{
					Items.Add(MakeValue(ReadComponent(Name, *Template, bComponentTool)));
				}
			}
		}
		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		if (Items.Num() > 0)
		{
			Document.SetArrayField(TEXT("components"), MoveTemp(Items));
		}
		return true;
	}

	// ---- Functions -------------------------------------------------------------------------------

	TSharedPtr<FJsonObject> ReadParameter(const FProperty* Property)
	{
		TSharedPtr<FJsonObject> Parameter = MakeShared<FJsonObject>();
		Parameter->SetStringField(TEXT("name"), Property->GetName());
		Parameter->SetObjectField(TEXT("type"), PropertyPinTypeToJson(Property));
		return Parameter;
	}

	const UEdGraph* FindGraphByName(const UBlueprint& Blueprint, const FString& Name)
	{
		TArray<UEdGraph*> Graphs;
		Blueprint.GetAllGraphs(Graphs);
		for (const UEdGraph* Graph : Graphs)
		{
			if (Graph && Graph->GetName().Equals(Name, ESearchCase::IgnoreCase))
			{
				return Graph;
			}
		}
		return nullptr;
	}

	/** A callable or overridable function of the class that has no graph of the Blueprint's own. */
	TSharedPtr<FJsonObject> ReadClassFunction(const FReadContext& Context, const UFunction& Function, bool bFunctionTool)
	{
		TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
		Entry->SetStringField(TEXT("name"), Function.GetName());
		const UClass* OwnerClass = Function.GetOwnerClass();
		if (OwnerClass && OwnerClass != Context.GeneratedClass)
		{
			Entry->SetStringField(TEXT("owner_class"), OwnerClass->GetName());
		}
		Entry->SetStringField(TEXT("function_type"), (Function.FunctionFlags & FUNC_BlueprintEvent) ? TEXT("event") : TEXT("function"));
		if (!bFunctionTool)
		{
			return Entry;
		}

		const FProperty* ReturnProperty = Function.GetReturnProperty();
		if (ReturnProperty)
		{
			TSharedPtr<FJsonObject> ReturnType = MakeShared<FJsonObject>();
			ReturnType->SetStringField(TEXT("name"), TEXT("ReturnValue"));
			ReturnType->SetObjectField(TEXT("type"), PropertyPinTypeToJson(ReturnProperty));
			Entry->SetObjectField(TEXT("return_type"), ReturnType);
		}
		else
		{
			Entry->SetStringField(TEXT("return_type"), TEXT("void"));
		}
		Entry->SetNumberField(TEXT("function_flags_enum"), static_cast<double>(static_cast<uint32>(Function.FunctionFlags)));
		Entry->SetBoolField(TEXT("is_pure"), (Function.FunctionFlags & FUNC_BlueprintPure) != 0);

		TArray<TSharedPtr<FJsonValue>> InParams;
		TArray<TSharedPtr<FJsonValue>> OutParams;
		for (TFieldIterator<FProperty> It(&Function); It; ++It)
		{
			const FProperty* Parameter = *It;
			if (Parameter == ReturnProperty)
			{
				continue;
			}
			((Parameter->GetPropertyFlags() & CPF_OutParm) ? OutParams : InParams).Add(MakeValue(ReadParameter(Parameter)));
		}
		if (InParams.Num() > 0)
		{
			Entry->SetArrayField(TEXT("in_params"), MoveTemp(InParams));
		}
		if (OutParams.Num() > 0)
		{
			Entry->SetArrayField(TEXT("out_params"), MoveTemp(OutParams));
		}
		if (const UEdGraph* Graph = FindGraphByName(*Context.Blueprint, Function.GetName()))
		{
			Entry->SetObjectField(TEXT("ed_graph"), FBlueprintReadUtils::ReadEdGraph(Graph, Context.Options));
		}
		return Entry;
	}

	bool ReadFunctions(FReadContext& Context, FJsonObject& Document)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolInfo::ToolName_ReadBlueprintFunction, ToolInfo::FieldName_FunctionName, Request))
		{
			return false;
		}
		const bool bFunctionTool = Context.IsTool(ToolInfo::ToolName_ReadBlueprintFunction);
		TArray<TSharedPtr<FJsonValue>> Items;
		TSet<FString> GraphNames;

		for (const UEdGraph* Graph : Context.Blueprint->FunctionGraphs)
		{
			if (!Graph)
			{
				continue;
			}
			const FString Name = Graph->GetName();
			GraphNames.Add(Name);
			if (!Request.Accept(Name))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Name);
			if (bFunctionTool)
			{
				Entry->SetObjectField(TEXT("ed_graph"), FBlueprintReadUtils::ReadEdGraph(Graph, Context.Options));
			}
			Items.Add(MakeValue(Entry));
		}

		for (TFieldIterator<UFunction> It(Context.GeneratedClass); It; ++It)
		{
			const UFunction* Function = *It;
			if (!(Function->FunctionFlags & ListedFunctionFlags) || GraphNames.Contains(Function->GetName()) || !Request.Accept(Function->GetName()))
			{
				continue;
			}
			Items.Add(MakeValue(ReadClassFunction(Context, *Function, bFunctionTool)));
		}

		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		if (Items.Num() > 0)
		{
			Document.SetArrayField(TEXT("functions"), MoveTemp(Items));
		}
		return true;
	}

	// ---- Macros and delegates --------------------------------------------------------------------

	/** Graph-only items: each graph's name, and the graph itself for the item's own tool. */
	bool ReadNamedGraphs(FReadContext& Context, FJsonObject& Document, const TArray<TObjectPtr<UEdGraph>>& Graphs, const TCHAR* ToolName, const TCHAR* FilterField, const TCHAR* SectionKey)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolName, FilterField, Request))
		{
			return false;
		}
		const bool bOwnTool = Context.IsTool(ToolName);
		TArray<TSharedPtr<FJsonValue>> Items;
		for (const UEdGraph* Graph : Graphs)
		{
			if (!Graph || !Request.Accept(Graph->GetName()))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Graph->GetName());
			if (bOwnTool)
			{
				Entry->SetObjectField(TEXT("ed_graph"), FBlueprintReadUtils::ReadEdGraph(Graph, Context.Options));
			}
			Items.Add(MakeValue(Entry));
		}
		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		if (Items.Num() > 0)
		{
			Document.SetArrayField(SectionKey, MoveTemp(Items));
		}
		return true;
	}

	// ---- Event graphs ----------------------------------------------------------------------------

	void ReadEventGraphs(FReadContext& Context, FJsonObject& Document)
	{
		const TSet<FString> NoNodeFilter;
		TArray<TSharedPtr<FJsonValue>> Graphs;
		for (const UEdGraph* Graph : Context.Blueprint->UbergraphPages)
		{
			Graphs.Add(MakeValue(FBlueprintReadUtils::ReadEventGraph(Graph, Context.Options, false, NoNodeFilter)));
		}
		Document.SetArrayField(TEXT("graphs"), MoveTemp(Graphs));
	}

	// ---- Timelines -------------------------------------------------------------------------------

	bool ReadTimelines(FReadContext& Context, FJsonObject& Document)
	{
		FItemRequest Request;
		if (!MakeItemRequest(Context, ToolInfo::ToolName_ReadBlueprintTimeline, ToolInfo::FieldName_TimelineName, Request))
		{
			return false;
		}
		const bool bTimelineTool = Context.IsTool(ToolInfo::ToolName_ReadBlueprintTimeline);
		TArray<TSharedPtr<FJsonValue>> Items;
		for (const UTimelineTemplate* Timeline : Context.Blueprint->Timelines)
		{
			if (!Timeline)
			{
				continue;
			}
			// Clients know a timeline by its variable's name, not its template object's.
			const FString Name = Timeline->GetName().Replace(TEXT("_Template"), TEXT(""), ESearchCase::IgnoreCase);
			if (!Request.Accept(Name))
			{
				continue;
			}
			TSharedPtr<FJsonObject> Entry = MakeShared<FJsonObject>();
			Entry->SetStringField(TEXT("name"), Name);
			if (bTimelineTool)
			{
				Entry->SetNumberField(TEXT("length"), Timeline->TimelineLength);
				Entry->SetBoolField(TEXT("auto_play"), Timeline->bAutoPlay);
				Entry->SetBoolField(TEXT("loop"), Timeline->bLoop);
			}
			Items.Add(MakeValue(Entry));
		}
		Request.AppendStatusEntries(Items, Context.bFinalizeRead);
		if (Items.Num() > 0)
		{
			Document.SetArrayField(TEXT("timelines"), MoveTemp(Items));
		}
		return true;
	}
}

namespace UE::CalvornBlueprint::ReadPrivate
{
	// Defined with the widget tree serialisers.
	void ReadWidgetTreeSection(UBlueprint* Blueprint, const TSharedPtr<FJsonObject>& Options, bool bWidgetTreeTool, const FString& Path, FJsonObject& Document, Calvorn::FToolResult& Result);
}

TSharedPtr<FJsonObject> UE::CalvornBlueprint::ReadPrivate::ReadBlueprintDocument(const TSharedPtr<FJsonObject>& Options, Calvorn::FToolResult& Result)
{
	FString Path;
	if (!Options.IsValid() || !Options->TryGetStringField(TEXT("path"), Path))
	{
		Result.AddErrorMessage(MissingFieldMessage(TEXT("path")));
		return nullptr;
	}
	FReadContext Context;
	Context.Options = Options;
	Context.Result = &Result;
	if (!TryGetReadTool(Options, Context.ReadTool))
	{
		Result.AddErrorMessage(MissingFieldMessage(ToolInfo::FieldName_ReadTool));
		return nullptr;
	}
	Context.bSchemaRead = Context.IsTool(ToolInfo::ToolName_ReadBlueprintSchema);
	Context.bFinalizeRead = IsFinalizeRead(Options);

	if (!FAssetOperationBase::AssetExists(Path))
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Blueprint does not exist: %s"), *Path));
		Result.AddErrorMessage(TEXT("Cannot read Blueprint. The asset may have been deleted."));
		return nullptr;
	}
	Context.Blueprint = FBlueprintUtils::LoadBlueprint(Path, Result);
	if (!Context.Blueprint)
	{
		return nullptr;
	}
	// Everything below reads the compiled class, so a Blueprint that was never compiled cannot be read.
	Context.GeneratedClass = Cast<UBlueprintGeneratedClass>(Context.Blueprint->GeneratedClass.Get());
	if (!Context.GeneratedClass)
	{
		Result.AddErrorMessage(FString::Printf(TEXT("Loaded asset is not a Blueprint: %s"), *Path));
		return nullptr;
	}

	FDocumentScope DocumentScope;
	TSharedPtr<FJsonObject> Document = MakeShared<FJsonObject>();
	Document->SetStringField(TEXT("path"), Path);
	if (Context.bSchemaRead)
	{
		Document->SetStringField(TEXT("name"), Context.Blueprint->GetPathName());
		Document->SetStringField(TEXT("class_path"), Context.GeneratedClass->GetPathName());
		Document->SetField(TEXT("parent_class"), ReadParentClass(*Context.Blueprint));
	}

	bool bRead = true;
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintInterface))
	{
		bRead = ReadInterfaces(Context, *Document);
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintVariable))
	{
		bRead = ReadVariables(Context, *Document);
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintComponent))
	{
		bRead = ReadComponents(Context, *Document);
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintFunction))
	{
		bRead = ReadFunctions(Context, *Document);
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintMacro))
	{
		bRead = ReadNamedGraphs(Context, *Document, Context.Blueprint->MacroGraphs, ToolInfo::ToolName_ReadBlueprintMacro, ToolInfo::FieldName_MacroName, TEXT("macros"));
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintDelegate))
	{
		bRead = ReadNamedGraphs(Context, *Document, Context.Blueprint->DelegateSignatureGraphs, ToolInfo::ToolName_ReadBlueprintDelegate, ToolInfo::FieldName_DelegateName, TEXT("delegates"));
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintEvent))
	{
		ReadEventGraphs(Context, *Document);
	}
	if (bRead && Context.TakesSection(ToolInfo::ToolName_ReadBlueprintTimeline))
	{
		bRead = ReadTimelines(Context, *Document);
	}
	if (!bRead)
	{
		return nullptr;
	}
	if (Context.TakesSection(ToolInfo::ToolName_ReadBlueprintWidgetTree))
	{
		ReadWidgetTreeSection(Context.Blueprint, Options, Context.IsTool(ToolInfo::ToolName_ReadBlueprintWidgetTree), Path, *Document, Result);
	}

	return Document;
}

FString FBlueprintReadUtils::ReadBlueprint(TSharedPtr<FJsonObject> Options, Calvorn::FToolResult& Result)
{
	// A failed read is "{}", which is also what printing a null document gives.
	return FAssetOperationBase::SerializeJson(ReadBlueprintDocument(Options, Result));
}
