// Help context numbers: every topic of resources/help/tonvale.hlp and every place in one that
// explains a control. The help tables of the dialogs use these names.
#pragma once

namespace tonvale {

inline constexpr unsigned long kHelpIndex = 0;

// Main window, document, files.
inline constexpr unsigned long kHelpMainWindow = 110010;
inline constexpr unsigned long kHelpCalculatorMenu = 110015;  // FILE_OPERATION
inline constexpr unsigned long kHelpWizardFile = 110016;      // the buttons above a wizard's pages
inline constexpr unsigned long kHelpTypingNumbers = 110020;
inline constexpr unsigned long kHelpUsingHelp = 110025;
inline constexpr unsigned long kHelpReportDocument = 110030;
inline constexpr unsigned long kHelpDocumentFormatting = 110035;
inline constexpr unsigned long kHelpPrinting = 110040;
inline constexpr unsigned long kHelpPageSetup = 110041;
inline constexpr unsigned long kHelpDataFiles = 110050;
inline constexpr unsigned long kHelpFileNotes = 110051;  // IDD_ADDENDUM
inline constexpr unsigned long kHelpCompanion = 110060;
inline constexpr unsigned long kHelpArchiveRegister = 110065;
inline constexpr unsigned long kHelpExposureQuantities = 110070;

// ADDNOTES
inline constexpr unsigned long kHelpPrintNotes = 110045;
inline constexpr unsigned long kHelpPrintNotesText = 110046;
inline constexpr unsigned long kHelpPrintNotesConfirm = 110047;
inline constexpr unsigned long kHelpPrintNotesSkip = 110048;
inline constexpr unsigned long kHelpPrintNotesCancel = 110049;

// LEPD
inline constexpr unsigned long kHelpDailyExposure = 100110;
inline constexpr unsigned long kHelpDailyItems = 110111;
inline constexpr unsigned long kHelpDailyAdd = 110112;
inline constexpr unsigned long kHelpDailyModify = 110113;
inline constexpr unsigned long kHelpDailyDelete = 110114;
inline constexpr unsigned long kHelpDailyTimeUnit = 110115;
inline constexpr unsigned long kHelpDailyEquivalentLevel = 110116;
inline constexpr unsigned long kHelpDailyTotalTime = 110117;
inline constexpr unsigned long kHelpDailyLevel = 110118;
inline constexpr unsigned long kHelpDailyNotes = 110119;
inline constexpr unsigned long kHelpDailyStatusBar = 110120;

// ADD_LEPD
inline constexpr unsigned long kHelpExposureItem = 110130;
inline constexpr unsigned long kHelpExposureItemLevel = 110131;
inline constexpr unsigned long kHelpExposureItemReadLevel = 110132;
inline constexpr unsigned long kHelpExposureItemTime = 110133;
inline constexpr unsigned long kHelpExposureItemConfirm = 110134;
inline constexpr unsigned long kHelpExposureItemCancel = 110135;

// LEPW
inline constexpr unsigned long kHelpWeeklyExposure = 100115;
inline constexpr unsigned long kHelpWeeklyDays = 264765752;
inline constexpr unsigned long kHelpWeeklyModify = 269418808;
inline constexpr unsigned long kHelpWeeklyLevel = 282132792;
inline constexpr unsigned long kHelpWeeklyNotes = 550830392;
inline constexpr unsigned long kHelpWeeklyStatusBar = 103350383;

// EDIT_LEPW
inline constexpr unsigned long kHelpWeekday = 110140;
inline constexpr unsigned long kHelpWeekdayName = 268042941;
inline constexpr unsigned long kHelpWeekdayLevel = 266076861;
inline constexpr unsigned long kHelpWeekdayReadLevel = 100660;
inline constexpr unsigned long kHelpWeekdayModify = 269484743;
inline constexpr unsigned long kHelpWeekdayDelete = 269484733;
inline constexpr unsigned long kHelpWeekdayCancel = 269484753;

// LEQGROUP
inline constexpr unsigned long kHelpGroupExposure = 100120;
inline constexpr unsigned long kHelpGroupTotal = 110150;
inline constexpr unsigned long kHelpGroupSamples = 110151;
inline constexpr unsigned long kHelpGroupAdd = 110152;
inline constexpr unsigned long kHelpGroupModify = 110153;
inline constexpr unsigned long kHelpGroupDelete = 110154;
inline constexpr unsigned long kHelpGroupConfidence = 110155;
inline constexpr unsigned long kHelpGroupInterval = 110156;
inline constexpr unsigned long kHelpGroupSampleCount = 110157;
inline constexpr unsigned long kHelpGroupMean = 110158;
inline constexpr unsigned long kHelpGroupDeviation = 110159;
inline constexpr unsigned long kHelpGroupVerdict = 110160;
inline constexpr unsigned long kHelpGroupNotes = 110161;
inline constexpr unsigned long kHelpGroupStatusBar = 110162;

// The uncertainty wizard: what its pages share, and page 115.
inline constexpr unsigned long kHelpUncertainty = 100595;
inline constexpr unsigned long kHelpUncertaintySampled = 110600;
inline constexpr unsigned long kHelpUncertaintyMeasured = 110601;
inline constexpr unsigned long kHelpUncertaintyInstrument = 110602;
inline constexpr unsigned long kHelpUncertaintyEnvironmental = 110603;
inline constexpr unsigned long kHelpUncertaintyTotal = 110604;
inline constexpr unsigned long kHelpUncertaintyTimeUnit = 110605;
inline constexpr unsigned long kHelpUncertaintyRemember = 110606;
inline constexpr unsigned long kHelpUncertaintyGoOn = 110607;
inline constexpr unsigned long kHelpUncertaintyFile = 110608;

// Page 116 and ERROR_ADD_LEQ
inline constexpr unsigned long kHelpUncertaintyLevel = 100600;
inline constexpr unsigned long kHelpLevelPageSamples = 110610;
inline constexpr unsigned long kHelpLevelPageCorrection = 110611;
inline constexpr unsigned long kHelpLevelPageTotalTime = 110612;
inline constexpr unsigned long kHelpLevelPageLevel = 110613;
inline constexpr unsigned long kHelpLevelPageTime = 110614;
inline constexpr unsigned long kHelpSample = 110620;
inline constexpr unsigned long kHelpSampleLevel = 110621;
inline constexpr unsigned long kHelpSampleReadLevel = 110622;
inline constexpr unsigned long kHelpSampleTime = 110623;
inline constexpr unsigned long kHelpSampleConfirm = 110624;
inline constexpr unsigned long kHelpSampleCancel = 110625;

// Page 117 and ERROR_ADD_LEPD
inline constexpr unsigned long kHelpUncertaintyDay = 100605;
inline constexpr unsigned long kHelpDayPagePeriods = 110630;
inline constexpr unsigned long kHelpDayPageLevel = 110631;
inline constexpr unsigned long kHelpDayPageTime = 110632;
inline constexpr unsigned long kHelpPeriod = 110640;
inline constexpr unsigned long kHelpPeriodLevel = 110641;
inline constexpr unsigned long kHelpPeriodReadLevel = 110642;
inline constexpr unsigned long kHelpPeriodLevelError = 110643;
inline constexpr unsigned long kHelpPeriodTime = 110644;
inline constexpr unsigned long kHelpPeriodAbsolute = 110645;
inline constexpr unsigned long kHelpPeriodPercent = 110646;
inline constexpr unsigned long kHelpPeriodZero = 110647;
inline constexpr unsigned long kHelpPeriodMemory = 110648;
inline constexpr unsigned long kHelpPeriodConfirm = 110649;
inline constexpr unsigned long kHelpPeriodCancel = 110650;

// Page 118 and ERROR_EDIT_LEPW
inline constexpr unsigned long kHelpUncertaintyWeek = 100610;
inline constexpr unsigned long kHelpWeekPageDays = 110660;
inline constexpr unsigned long kHelpWeekPageLevel = 110661;
inline constexpr unsigned long kHelpUncertainDay = 110670;
inline constexpr unsigned long kHelpUncertainDayName = 110671;
inline constexpr unsigned long kHelpUncertainDayLevel = 110672;
inline constexpr unsigned long kHelpUncertainDayReadLevel = 110673;
inline constexpr unsigned long kHelpUncertainDayError = 110674;
inline constexpr unsigned long kHelpUncertainDayMemory = 110675;
inline constexpr unsigned long kHelpUncertainDayModify = 110676;
inline constexpr unsigned long kHelpUncertainDayDelete = 110677;
inline constexpr unsigned long kHelpUncertainDayCancel = 110678;

// Page 107 of the uncertainty wizard
inline constexpr unsigned long kHelpUncertaintyReport = 100615;
inline constexpr unsigned long kHelpUncertaintyReportText = 110680;
inline constexpr unsigned long kHelpUncertaintyNotes = 110681;

// SPETTRORUM
inline constexpr unsigned long kHelpNoiseSpectrum = 100130;
inline constexpr unsigned long kHelpNoiseBands = 110301;
inline constexpr unsigned long kHelpNoiseALevel = 110302;
inline constexpr unsigned long kHelpNoiseCLevel = 110303;
inline constexpr unsigned long kHelpNoiseNotes = 110304;
inline constexpr unsigned long kHelpNoiseStatusBar = 110305;

// SPETTRODPI
inline constexpr unsigned long kHelpAttenuationSpectrum = 100135;
inline constexpr unsigned long kHelpAttenuationBands = 110311;
inline constexpr unsigned long kHelpAttenuationHml = 110312;
inline constexpr unsigned long kHelpAttenuationSnr = 110313;
inline constexpr unsigned long kHelpAttenuationNotes = 110314;
inline constexpr unsigned long kHelpAttenuationStatusBar = 110315;

// "Scelta DPI", a topic for each page
inline constexpr unsigned long kHelpProtectorSelection = 110700;
inline constexpr unsigned long kHelpSelectionQuestions = 110701;
inline constexpr unsigned long kHelpSelectionConditions = 110702;
inline constexpr unsigned long kHelpSelectionShortNoises = 110703;
inline constexpr unsigned long kHelpSelectionKinds = 110704;
inline constexpr unsigned long kHelpSelectionMethod = 110705;
inline constexpr unsigned long kHelpSelectionInformation = 110706;
inline constexpr unsigned long kHelpSelectionMethods = 110707;
inline constexpr unsigned long kHelpSelectionActionLevel = 110708;
inline constexpr unsigned long kHelpSelectionData = 110710;
inline constexpr unsigned long kHelpSelectionLaeq = 110711;
inline constexpr unsigned long kHelpSelectionLceq = 110712;
inline constexpr unsigned long kHelpSelectionNoiseClass = 110713;
inline constexpr unsigned long kHelpSelectionNoiseBands = 110714;
inline constexpr unsigned long kHelpSelectionImportNoise = 110715;
inline constexpr unsigned long kHelpSelectionSnr = 110716;
inline constexpr unsigned long kHelpSelectionHml = 110717;
inline constexpr unsigned long kHelpSelectionProtectorBands = 110718;
inline constexpr unsigned long kHelpSelectionImportProtector = 110719;
inline constexpr unsigned long kHelpSelectionSnrMethod = 110720;
inline constexpr unsigned long kHelpSelectionCorrectedSnrMethod = 110721;
inline constexpr unsigned long kHelpSelectionOctaveBandMethod = 110722;
inline constexpr unsigned long kHelpSelectionHmlCheckMethod = 110723;
inline constexpr unsigned long kHelpSelectionHmlMethod = 110724;
inline constexpr unsigned long kHelpSelectionResults = 110730;
inline constexpr unsigned long kHelpSelectionResultText = 110731;
inline constexpr unsigned long kHelpSelectionNotes = 110732;

// The dialog NIPTS, one topic for each quantity, and its views.
inline constexpr unsigned long kHelpHearingModel = 110180;
inline constexpr unsigned long kHelpNipts = 100185;
inline constexpr unsigned long kHelpHtla = 100190;
inline constexpr unsigned long kHelpHtlan = 100195;
inline constexpr unsigned long kHelpHearingDialog = 110185;
inline constexpr unsigned long kHelpHearingYears = 110186;
inline constexpr unsigned long kHelpHearingLevel = 110187;
inline constexpr unsigned long kHelpHearingAge = 110188;
inline constexpr unsigned long kHelpHearingTableNew = 110189;
inline constexpr unsigned long kHelpHearingTableOld = 110190;
inline constexpr unsigned long kHelpHearingTableBiological = 110191;
inline constexpr unsigned long kHelpHearingMale = 110192;
inline constexpr unsigned long kHelpHearingFemale = 110193;
inline constexpr unsigned long kHelpHearingQuantity = 110194;
inline constexpr unsigned long kHelpHearingStatusBar = 110195;
inline constexpr unsigned long kHelpHearingConfirm = 110196;
inline constexpr unsigned long kHelpHearingClose = 110197;
inline constexpr unsigned long kHelpHearingViews = 110198;
inline constexpr unsigned long kHelpHearingTable = 110199;
inline constexpr unsigned long kHelpHearingChart = 110200;
inline constexpr unsigned long kHelpHearingAudiogram = 110201;
inline constexpr unsigned long kHelpDamageTables = 110202;

// CALCOLOILG
inline constexpr unsigned long kHelpAudiogramDamage = 110500;
inline constexpr unsigned long kHelpAudiogramLosses = 110501;
inline constexpr unsigned long kHelpAudiogramModify = 110502;
inline constexpr unsigned long kHelpAudiogramSymmetric = 110503;
inline constexpr unsigned long kHelpAudiogramTable = 110504;
inline constexpr unsigned long kHelpAudiogramFormula = 110505;
inline constexpr unsigned long kHelpAudiogramResult = 110506;
inline constexpr unsigned long kHelpAudiogramNotes = 110507;
inline constexpr unsigned long kHelpAudiogramStatusBar = 110508;

// EDIT_ILG
inline constexpr unsigned long kHelpLoss = 110510;
inline constexpr unsigned long kHelpLossFrequency = 110511;
inline constexpr unsigned long kHelpLossLeft = 110512;
inline constexpr unsigned long kHelpLossRight = 110513;
inline constexpr unsigned long kHelpLossSymmetric = 110514;
inline constexpr unsigned long kHelpLossConfirm = 110515;
inline constexpr unsigned long kHelpLossDelete = 110516;
inline constexpr unsigned long kHelpLossCancel = 110517;

// CONFRONTO
inline constexpr unsigned long kHelpPredictions = 100200;
inline constexpr unsigned long kHelpPredictionsFractile = 110211;
inline constexpr unsigned long kHelpPredictionsFrequency = 110212;
inline constexpr unsigned long kHelpPredictionsLevel = 110213;
inline constexpr unsigned long kHelpPredictionsStatusBar = 110214;
inline constexpr unsigned long kHelpPredictionsConfirm = 110215;
inline constexpr unsigned long kHelpPredictionsClose = 110216;
inline constexpr unsigned long kHelpPredictionsTime = 110217;
inline constexpr unsigned long kHelpPredictionsLevels = 110218;

// PEPPECUR
inline constexpr unsigned long kHelpEvolution = 110250;
inline constexpr unsigned long kHelpEvolutionFractile = 110251;
inline constexpr unsigned long kHelpEvolutionLevel = 110252;
inline constexpr unsigned long kHelpEvolutionAge = 110253;
inline constexpr unsigned long kHelpEvolutionTable = 110254;
inline constexpr unsigned long kHelpEvolutionSex = 110255;
inline constexpr unsigned long kHelpEvolutionStatusBar = 110256;
inline constexpr unsigned long kHelpEvolutionConfirm = 110257;
inline constexpr unsigned long kHelpEvolutionClose = 110258;

// RISK
inline constexpr unsigned long kHelpRisk = 100215;
inline constexpr unsigned long kHelpRiskYears = 110271;
inline constexpr unsigned long kHelpRiskLevel = 110272;
inline constexpr unsigned long kHelpRiskAge = 110273;
inline constexpr unsigned long kHelpRiskSex = 110274;
inline constexpr unsigned long kHelpRiskCriterion = 110275;
inline constexpr unsigned long kHelpRiskStatusBar = 110276;
inline constexpr unsigned long kHelpRiskConfirm = 110277;
inline constexpr unsigned long kHelpRiskClose = 110278;

}  // namespace tonvale
