var modTitle = "Sample Lesson";
var objLessonModule = new objLesson(window.modTitle);
var copyright = "© 2025 Your Organization";
var useSCORM = true;
objLessonModule.addPage(objLessonModule.pages.length, "Welcome");
objLessonModule.addPage(objLessonModule.pages.length, "Key ideas");
objLessonModule.addPage(objLessonModule.pages.length, "Check your understanding");

var intNumPages = objLessonModule.pages.length;
var topPage = intNumPages - 1;
