<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>ContextsPage</name>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>No contexts here yet.</source>
        <translation>Здесь пока нет контекстов.</translation>
    </message>
</context>
<context>
    <name>DailyPlanPage</name>
    <message>
        <source>Daily Plan</source>
        <translation>План на день</translation>
    </message>
    <message>
        <source>The tasks of the day in one list: what is due, what is overdue, what can be done today and the repeating tasks of the day.</source>
        <translation>Задачи дня одним списком: что нужно сделать к сроку, что просрочено, что можно сделать сегодня, и повторяющиеся задачи этого дня.</translation>
    </message>
</context>
<context>
    <name>FavoritesPage</name>
    <message>
        <source>Favorites</source>
        <translation>Избранное</translation>
    </message>
    <message>
        <source>The tasks, projects and contexts you mark with a star, gathered in one place.</source>
        <translation>Задачи, проекты и контексты, отмеченные звёздочкой, собраны в одном месте.</translation>
    </message>
</context>
<context>
    <name>MessagePopup</name>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
</context>
<context>
    <name>MethodPage</name>
    <message>
        <source>Method</source>
        <translation>Методика</translation>
    </message>
    <message>
        <source>A short guide to the method behind Norvel: capture, sort, plan the day and do.</source>
        <translation>Краткое руководство по методике Norvel: записывайте, распределяйте, планируйте день и действуйте.</translation>
    </message>
</context>
<context>
    <name>NorvelBoxPage</name>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>Everything that comes to mind lands here first: capture a task in a few words and sort it into a project later.</source>
        <translation>Всё, что приходит в голову, сначала попадает сюда: запишите задачу в двух словах, а в проект распределите её позже.</translation>
    </message>
</context>
<context>
    <name>NvMenuBar</name>
    <message>
        <source>File</source>
        <translation>Файл</translation>
    </message>
    <message>
        <source>Recent Projects</source>
        <translation>Недавние проекты</translation>
    </message>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>Sync</source>
        <translation>Синхронизировать</translation>
    </message>
    <message>
        <source>Settings...</source>
        <translation>Настройки...</translation>
    </message>
    <message>
        <source>Close Window</source>
        <translation>Закрыть окно</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Правка</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Вырезать</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Копировать</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Вставить</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Выделить всё</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Вид</translation>
    </message>
    <message>
        <source>Go to</source>
        <translation>Перейти</translation>
    </message>
    <message>
        <source>Daily Plan</source>
        <translation>План на день</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>Show Navigation Panel</source>
        <translation>Показать панель навигации</translation>
    </message>
    <message>
        <source>Hide Navigation Panel</source>
        <translation>Скрыть панель навигации</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Справка</translation>
    </message>
    <message>
        <source>Open our Website</source>
        <translation>Открыть наш сайт</translation>
    </message>
    <message>
        <source>Report an Error...</source>
        <translation>Сообщить об ошибке...</translation>
    </message>
    <message>
        <source>Norvel for Linux v%1</source>
        <translation>Norvel для Linux v%1</translation>
    </message>
    <message>
        <source>Our blog</source>
        <translation>Наш блог</translation>
    </message>
    <message>
        <source>Norvel on VK</source>
        <translation>Norvel ВКонтакте</translation>
    </message>
    <message>
        <source>Norvel on Instagram</source>
        <translation>Norvel в Instagram</translation>
    </message>
    <message>
        <source>Norvel on Facebook</source>
        <translation>Norvel в Facebook</translation>
    </message>
    <message>
        <source>Norvel on Twitter</source>
        <translation>Norvel в Twitter</translation>
    </message>
    <message>
        <source>Subscribe to our news</source>
        <translation>Подписаться на новости</translation>
    </message>
    <message>
        <source>Terms of Use</source>
        <translation>Условия использования</translation>
    </message>
    <message>
        <source>Privacy Policy</source>
        <translation>Политика конфиденциальности</translation>
    </message>
</context>
<context>
    <name>NvStatusBar</name>
    <message>
        <source>Sync in progress…</source>
        <translation>Идёт синхронизация…</translation>
    </message>
    <message>
        <source>Sync hasn&apos;t been performed yet</source>
        <translation>Синхронизация ещё не выполнялась</translation>
    </message>
    <message>
        <source>Last synced: today %1</source>
        <translation>Последняя синхронизация: сегодня в %1</translation>
    </message>
    <message>
        <source>Last synced: %1</source>
        <translation>Последняя синхронизация: %1</translation>
    </message>
</context>
<context>
    <name>NvToolBar</name>
    <message>
        <source>Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Вперёд</translation>
    </message>
    <message>
        <source>Show or hide the navigation panel</source>
        <translation>Показать или скрыть панель навигации</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>Sync</source>
        <translation>Синхронизировать</translation>
    </message>
    <message>
        <source>Trash</source>
        <translation>Корзина</translation>
    </message>
</context>
<context>
    <name>ProjectsPage</name>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>No folders or projects here yet.</source>
        <translation>Здесь пока нет папок и проектов.</translation>
    </message>
</context>
<context>
    <name>ProxyAuthDialog</name>
    <message>
        <source>Remember my password</source>
        <translation>Запомнить пароль</translation>
    </message>
    <message>
        <source>Authentication Required</source>
        <translation>Требуется аутентификация</translation>
    </message>
    <message>
        <source>Username:</source>
        <translation>Имя пользователя:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Пароль:</translation>
    </message>
    <message>
        <source>Connect to proxy %1 using:</source>
        <translation>Подключиться к прокси-серверу %1 с данными:</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
</context>
<context>
    <name>SearchPage</name>
    <message>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>Tasks, projects and contexts whose names or descriptions contain the searched words.</source>
        <translation>Задачи, проекты и контексты, в названиях или описаниях которых встречаются искомые слова.</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Your account and sync, the theme and the language, the daily plan and the reminders.</source>
        <translation>Учётная запись и синхронизация, тема и язык, план на день и напоминания.</translation>
    </message>
</context>
<context>
    <name>SidePanel</name>
    <message>
        <source>Norvel Box</source>
        <translation>Norvel Box</translation>
    </message>
    <message>
        <source>Daily Plan</source>
        <translation>План на день</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Проекты</translation>
    </message>
    <message>
        <source>Contexts</source>
        <translation>Контексты</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>Избранное</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Методика</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
</context>
<context>
    <name>SystemTray</name>
    <message>
        <source>Hide Norvel</source>
        <translation>Скрыть Norvel</translation>
    </message>
    <message>
        <source>Show Norvel</source>
        <translation>Показать Norvel</translation>
    </message>
    <message>
        <source>Quit Norvel</source>
        <translation>Выйти из Norvel</translation>
    </message>
</context>
<context>
    <name>TrashPage</name>
    <message>
        <source>Trash</source>
        <translation>Корзина</translation>
    </message>
    <message>
        <source>Deleted tasks, projects, folders and contexts, ready to be restored or removed for good.</source>
        <translation>Удалённые задачи, проекты, папки и контексты: их можно восстановить или удалить навсегда.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Database Error</source>
        <translation>Ошибка базы данных</translation>
    </message>
    <message>
        <source>Unable to deploy database. Please contact the application&apos;s support team for more information. The application will be closed.</source>
        <translation>Не удалось развернуть базу данных. Пожалуйста, обратитесь в службу поддержки приложения. Приложение будет закрыто.</translation>
    </message>
    <message>
        <source>Please note that the app is still running in the background. In order to close it please use the icon in the system tray.</source>
        <translation>Обратите внимание: приложение продолжает работать в фоне. Чтобы закрыть его, воспользуйтесь значком в системном лотке.</translation>
    </message>
    <message>
        <source>Network error</source>
        <translation>Ошибка сети</translation>
    </message>
    <message>
        <source>The server could not be reached. Make sure the internet connection is working and try again.</source>
        <translation>Не удалось связаться с сервером. Проверьте подключение к интернету и попробуйте ещё раз.</translation>
    </message>
    <message>
        <source>Sync error</source>
        <translation>Ошибка синхронизации</translation>
    </message>
    <message>
        <source>It seems like you changed your password on another device. Please login to your account with the new password.</source>
        <translation>Похоже, вы сменили пароль на другом устройстве. Войдите в учётную запись с новым паролем.</translation>
    </message>
</context>
</TS>
