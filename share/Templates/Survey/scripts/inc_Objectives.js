var modTitle = "Sample Survey";
var copyright = "© 2025 Your Organization";
var useSCORM = true;
EvalID = arrQuestions.length;
thisID = EvalID+1;
arrQuestions[EvalID] = new objEvalQuestion(thisID, "radio");
arrQuestions[EvalID].evalQuestion = "Rate how well you met the objective: <i>Describe the three kinds of Lumora module</i>.";
thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "0";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Excellent";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "1";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Good";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "2";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "3";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Below Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "4";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Poor";

EvalID = arrQuestions.length;
thisID = EvalID+1;
arrQuestions[EvalID] = new objEvalQuestion(thisID, "radio");
arrQuestions[EvalID].evalQuestion = "Rate how well you met the objective: <i>Move through a lesson with the outline and the page buttons</i>.";
thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "0";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Excellent";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "1";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Good";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "2";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "3";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Below Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "4";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Poor";

EvalID = arrQuestions.length;
thisID = EvalID+1;
arrQuestions[EvalID] = new objEvalQuestion(thisID, "radio");
arrQuestions[EvalID].evalQuestion = "Rate how well you met the objective: <i>Explain how an evaluation is scored</i>.";
thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "0";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Excellent";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "1";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Good";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "2";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "3";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Below Average";

thisOpt = arrQuestions[EvalID].evalDistractors.length;
arrQuestions[EvalID].addDistractor(true);
arrQuestions[EvalID].evalDistractors[thisOpt].txtValue = "4";
arrQuestions[EvalID].evalDistractors[thisOpt].txtDisplay = "Poor";

intNumQuestions = arrQuestions.length;
