#pragma once

#include "CoreMinimal.h"
#include "Catalogue/EngineCatalogue.h"
#include "Modules/ModuleManager.h"
#include "UObject/Class.h"
#include "UObject/EnumProperty.h"
#include "UObject/FieldIterator.h"
#include "UObject/TextProperty.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace CatalogueTest
{
	inline std::string U8(const FString& Str)
	{
		return FStringToUTF8(Str);
	}

	/** Starts the Catalogue module, as a program does when it starts its modules. */
	inline void StartCatalogue()
	{
		FModuleManager::Get().LoadModuleChecked(TEXT("Catalogue"));
	}

	inline UClass* FindClass(const TCHAR* Path)
	{
		StartCatalogue();
		return FindObject<UClass>(nullptr, Path);
	}

	inline UFunction* FindFunction(const TCHAR* ClassPath, const TCHAR* FunctionName)
	{
		UClass* Class = FindClass(ClassPath);
		return Class ? Class->FindFunctionByName(FName(FunctionName)) : nullptr;
	}

	/** The parameters of a function in declaration order (the return value last). */
	inline std::vector<FProperty*> ParametersOf(const UFunction* Function)
	{
		std::vector<FProperty*> Result;
		for (TFieldIterator<FProperty> It(Function); It; ++It)
		{
			Result.push_back(*It);
		}
		return Result;
	}

	inline std::vector<std::string> NamesOf(const std::vector<FProperty*>& Properties)
	{
		std::vector<std::string> Result;
		for (const FProperty* Property : Properties)
		{
			Result.push_back(U8(Property->GetName()));
		}
		return Result;
	}

	/** The metadata value, or "<absent>" so a missing key and an empty value stay distinguishable. */
	inline std::string MetaOf(const UField* Field, const TCHAR* Key)
	{
		const FString* Value = Field->FindMetaData(Key);
		return Value ? U8(*Value) : std::string("<absent>");
	}

	inline std::string MetaOf(const FField* Field, const TCHAR* Key)
	{
		const FString* Value = Field->FindMetaData(Key);
		return Value ? U8(*Value) : std::string("<absent>");
	}
}
