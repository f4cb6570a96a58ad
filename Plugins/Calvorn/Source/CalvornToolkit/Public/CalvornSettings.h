#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

/**
 * Project settings of the Calvorn tools, stored as the editor stores a class's config: in the
 * project's Config/DefaultEditor.ini, section [/Script/CalvornToolkit.CalvornSettings], one
 * "Name=Value" line per config property in the property's text form:
 *
 *     [/Script/CalvornToolkit.CalvornSettings]
 *     bFocusOnNewNodes=False
 *
 * Read into the class default object (GetDefault<UCalvornSettings>()) when the CalvornToolkit module
 * starts, and again by ReloadConfig. A missing file, section or key leaves the default; a value that
 * does not read as the property's type leaves it too, and is reported by ReloadConfig.
 */
UCLASS(config = Editor, defaultconfig)
class CALVORNTOOLKIT_API UCalvornSettings : public UObject
{
	DECLARE_CLASS(UCalvornSettings, UObject, CLASS_Config | CLASS_DefaultConfig, CASTCLASS_None, TEXT("/Script/CalvornToolkit"), CALVORNTOOLKIT_API)

public:
	UCalvornSettings() = default;

	/** Whether the editor brings a graph editor to a node or graph that a tool has just created. */
	UPROPERTY(config, EditAnywhere, Category = "Editor")
	bool bFocusOnNewNodes = true;

	/** The ini file name of the class's config, relative to the project's Config folder. */
	[[nodiscard]] static FString GetConfigFileName();

	/** The ini section of the class's config: "/Script/<Module>.<Class>". */
	[[nodiscard]] static FString GetConfigSectionName();

	/**
	 * Re-reads the config properties of this object from the project's config file, starting from
	 * the class defaults. Returns false, with one line per problem in OutErrors, when a value could
	 * not be read (that property keeps its default); a missing file is no problem.
	 */
	bool ReloadConfig(TArray<FString>* OutErrors = nullptr);
};
