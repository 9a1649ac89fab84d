/// \file
/// The whole VelkApi interface.
#pragma once

#include <velkapi/ActionSection.h>
#include <velkapi/Capture.h>
#include <velkapi/ExpertParameterSection.h>
#include <velkapi/ExpertToolSection.h>
#include <velkapi/Export.h>
#include <velkapi/GeolibWrapper.h>
#include <velkapi/GeometrySection.h>
#include <velkapi/HeaderSection.h>
#include <velkapi/LogFile.h>
#include <velkapi/MacroExport.h>
#include <velkapi/MacroVdm.h>
#include <velkapi/MessageSection.h>
#include <velkapi/MillDrillOperation.h>
#include <velkapi/MillDrillOperationType.h>
#include <velkapi/MillTurnVdm.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ParameterSection.h>
#include <velkapi/SectionDictionary.h>
#include <velkapi/SectionValue.h>
#include <velkapi/ToolList.h>
#include <velkapi/ToolSection.h>
#include <velkapi/TurnToolSection.h>
#include <velkapi/Value.h>
#include <velkapi/VelkObject.h>
