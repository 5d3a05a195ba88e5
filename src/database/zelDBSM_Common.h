#pragma once
#include "database/TableRecord.h"

// COMMON: the one-row table of company-wide settings.
extern TableRecord gCommonRecord;

void gpCommon_Register(qint16 iFile, const QString &sDataPath, const QVariant &vStore,
                       const QString &sName);
void gpCommon_Create(qint16 iFile);
void gpCommon_RowToRecord(qint16 iFile);
void gpCommon_RecordToRow(qint16 iFile);
QString gfsCommon_InsertValues();
