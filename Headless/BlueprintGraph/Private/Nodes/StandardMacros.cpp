#include "K2Node_MacroInstance.h"
#include "K2Node_Tunnel.h"

#include "EdGraph/EdGraph.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

// The engine ships its standard macros as an asset, /Engine/EditorBlueprintResources/StandardMacros. Nothing
// here reads engine content, so the library is built in memory with the same package, Blueprint and graph
// names, the same graph guids where they are known from real exports, and the same boundary pins, so that a
// macro node saved here names the same graph the editor would. Only the boundary is built: the macros' bodies
// are the compiler's business and are not part of the library here.

namespace
{
	const TCHAR* const LibraryPackageName = TEXT("/Engine/EditorBlueprintResources/StandardMacros");
	const TCHAR* const LibraryName = TEXT("StandardMacros");

	enum class EPinKind
	{
		Exec,
		Bool,
		Int,
		Wildcard,
		WildcardArray,
		Object,
	};

	/** A pin of the macro as its users see it: inputs are the entry tunnel's outputs, outputs the exit's inputs. */
	struct FMacroPin
	{
		const TCHAR* Name;
		EEdGraphPinDirection Direction;
		EPinKind Kind;
		const TCHAR* DefaultValue = TEXT("");
	};

	struct FMacroDefinition
	{
		const TCHAR* Name;
		/** The graph's guid in the engine's asset, where a real export shows it; empty otherwise. */
		const TCHAR* KnownGuid;
		TArray<FMacroPin> Pins;
	};

	const TArray<FMacroDefinition>& GetDefinitions()
	{
		static const TArray<FMacroDefinition> Definitions = {
			{ TEXT("ForEachLoop"), TEXT("99DBFD5540A796041F72A5A9DA655026"), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Array"), EGPD_Input, EPinKind::WildcardArray },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Array Element"), EGPD_Output, EPinKind::Wildcard },
				{ TEXT("Array Index"), EGPD_Output, EPinKind::Int },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("ForEachLoopWithBreak"), TEXT("F07560274C5742E391E84B8F394CFB36"), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Array"), EGPD_Input, EPinKind::WildcardArray },
				{ TEXT("Break"), EGPD_Input, EPinKind::Exec },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Array Element"), EGPD_Output, EPinKind::Wildcard },
				{ TEXT("Array Index"), EGPD_Output, EPinKind::Int },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("ReverseForEachLoop"), TEXT(""), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Array"), EGPD_Input, EPinKind::WildcardArray },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Array Element"), EGPD_Output, EPinKind::Wildcard },
				{ TEXT("Array Index"), EGPD_Output, EPinKind::Int },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("ForLoop"), TEXT(""), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("FirstIndex"), EGPD_Input, EPinKind::Int, TEXT("0") },
				{ TEXT("LastIndex"), EGPD_Input, EPinKind::Int, TEXT("0") },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Index"), EGPD_Output, EPinKind::Int },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("ForLoopWithBreak"), TEXT(""), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("FirstIndex"), EGPD_Input, EPinKind::Int, TEXT("0") },
				{ TEXT("LastIndex"), EGPD_Input, EPinKind::Int, TEXT("0") },
				{ TEXT("Break"), EGPD_Input, EPinKind::Exec },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Index"), EGPD_Output, EPinKind::Int },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("WhileLoop"), TEXT(""), {
				{ TEXT("Exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Condition"), EGPD_Input, EPinKind::Bool, TEXT("false") },
				{ TEXT("LoopBody"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("DoOnce"), TEXT("1281F54248A2ECB5B8B2C5B24AE6FDF4"), {
				{ TEXT("execute"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Reset"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Start Closed"), EGPD_Input, EPinKind::Bool, TEXT("false") },
				{ TEXT("Completed"), EGPD_Output, EPinKind::Exec } } },
			{ TEXT("Do N"), TEXT(""), {
				{ TEXT("Enter"), EGPD_Input, EPinKind::Exec },
				{ TEXT("N"), EGPD_Input, EPinKind::Int, TEXT("1") },
				{ TEXT("Reset"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Exit"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Counter"), EGPD_Output, EPinKind::Int } } },
			{ TEXT("Gate"), TEXT(""), {
				{ TEXT("Enter"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Open"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Close"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Toggle"), EGPD_Input, EPinKind::Exec },
				{ TEXT("Start Closed"), EGPD_Input, EPinKind::Bool, TEXT("false") },
				{ TEXT("Exit"), EGPD_Output, EPinKind::Exec } } },
			// The real FlipFlop's exec input has no name.
			{ TEXT("FlipFlop"), TEXT("BFFFAAE4434E166F549665AD1AA89B60"), {
				{ TEXT(""), EGPD_Input, EPinKind::Exec },
				{ TEXT("A"), EGPD_Output, EPinKind::Exec },
				{ TEXT("B"), EGPD_Output, EPinKind::Exec },
				{ TEXT("IsA"), EGPD_Output, EPinKind::Bool } } },
			{ TEXT("IsValid"), TEXT("64422BCD430703FF5CAEA8B79A32AA65"), {
				{ TEXT("exec"), EGPD_Input, EPinKind::Exec },
				{ TEXT("InputObject"), EGPD_Input, EPinKind::Object },
				{ TEXT("Is Valid"), EGPD_Output, EPinKind::Exec },
				{ TEXT("Is Not Valid"), EGPD_Output, EPinKind::Exec } } },
		};
		return Definitions;
	}

	FEdGraphPinType PinTypeFor(EPinKind Kind)
	{
		FEdGraphPinType Type;
		switch (Kind)
		{
		case EPinKind::Exec: Type.PinCategory = UEdGraphSchema_K2::PC_Exec; break;
		case EPinKind::Bool: Type.PinCategory = UEdGraphSchema_K2::PC_Boolean; break;
		case EPinKind::Int: Type.PinCategory = UEdGraphSchema_K2::PC_Int; break;
		case EPinKind::Wildcard: Type.PinCategory = UEdGraphSchema_K2::PC_Wildcard; break;
		case EPinKind::WildcardArray:
			Type.PinCategory = UEdGraphSchema_K2::PC_Wildcard;
			Type.ContainerType = EPinContainerType::Array;
			break;
		case EPinKind::Object:
			Type.PinCategory = UEdGraphSchema_K2::PC_Object;
			Type.PinSubCategoryObject = UObject::StaticClass();
			break;
		}
		return Type;
	}

	/** A guid that depends only on the text: library objects never draw from the (seedable) guid generator. */
	FGuid NameGuid(const FString& Text)
	{
		uint32 Parts[4] = { 0x811C9DC5u, 0x01000193u, 0x9E3779B9u, 0x85EBCA6Bu };
		for (int32 Index = 0; Index < Text.Len(); ++Index)
		{
			for (uint32& Part : Parts)
			{
				Part = (Part ^ uint32(Text[Index])) * 0x01000193u + 0x7F4A7C15u;
			}
		}
		return FGuid(Parts[0], Parts[1], Parts[2], Parts[3]);
	}

	UK2Node_Tunnel* AddTunnel(UEdGraph& Graph, bool bEntry, const FString& MacroName)
	{
		UK2Node_Tunnel* Tunnel = static_cast<UK2Node_Tunnel*>(Graph.CreateNode(UK2Node_Tunnel::StaticClass(), false, false));
		Tunnel->bCanHaveOutputs = bEntry;
		Tunnel->bCanHaveInputs = !bEntry;
		Tunnel->bIsEditable = true;
		Tunnel->NodePosX = bEntry ? 0 : 240;
		Tunnel->NodeGuid = NameGuid(MacroName + (bEntry ? TEXT(".Entry") : TEXT(".Exit")));
		Tunnel->AllocateDefaultPins();
		return Tunnel;
	}

	UBlueprint* BuildLibrary()
	{
		UPackage* Package = CreatePackage(LibraryPackageName);
		UBlueprint* Library = NewObject<UBlueprint>(Package, LibraryName, RF_Public | RF_Standalone);
		Library->BlueprintType = BPTYPE_MacroLibrary;
		Library->ParentClass = UObject::StaticClass();
		Package->AddToRoot();
		Library->AddToRoot();

		for (const FMacroDefinition& Definition : GetDefinitions())
		{
			const FString MacroName = Definition.Name;
			UEdGraph* Graph = NewObject<UEdGraph>(Library, FName(*MacroName));
			Graph->Schema = UEdGraphSchema_K2::StaticClass();
			Graph->bAllowDeletion = false;
			FGuid Guid;
			Graph->GraphGuid = FGuid::Parse(Definition.KnownGuid, Guid) ? Guid : NameGuid(MacroName);
			Library->MacroGraphs.Add(Graph);

			UK2Node_Tunnel* Entry = AddTunnel(*Graph, true, MacroName);
			UK2Node_Tunnel* Exit = AddTunnel(*Graph, false, MacroName);
			for (const FMacroPin& Pin : Definition.Pins)
			{
				// A macro input is an output of the entry tunnel inside the graph, and the other way round.
				UK2Node_Tunnel* Tunnel = Pin.Direction == EGPD_Input ? Entry : Exit;
				TSharedPtr<FUserPinInfo> Declared = MakeShared<FUserPinInfo>();
				Declared->PinName = FName(Pin.Name);
				Declared->PinType = PinTypeFor(Pin.Kind);
				Declared->DesiredPinDirection = UEdGraphPin::GetComplementaryDirection(Pin.Direction);
				Declared->PinDefaultValue = Pin.DefaultValue;
				Tunnel->UserDefinedPins.Add(Declared);
				UEdGraphPin* Created = Tunnel->CreatePinFromUserDefinition(Declared);
				check(Created);
				Created->PinId = NameGuid(MacroName + TEXT(".") + Pin.Name);
			}
		}
		return Library;
	}
}

namespace UE::BlueprintGraph
{
	UBlueprint* GetStandardMacros()
	{
		static UBlueprint* Library = nullptr;
		if (!Library)
		{
			Library = FindObject<UBlueprint>(nullptr, *FString::Printf(TEXT("%s.%s"), LibraryPackageName, LibraryName));
			if (!Library)
			{
				Library = BuildLibrary();
			}
		}
		return Library;
	}

	UEdGraph* FindStandardMacro(FName MacroName)
	{
		UBlueprint* Library = GetStandardMacros();
		for (UEdGraph* Graph : Library->MacroGraphs)
		{
			if (Graph && Graph->GetFName() == MacroName)
			{
				return Graph;
			}
		}
		return nullptr;
	}
}
