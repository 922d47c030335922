#pragma once

#include <string_view>

namespace credentials {

/// Some programs, and where among their arguments a credential is. `rules` are separated by "|"; a
/// rule is one of:
///
///   -p>     the value of this option, in the next word or in the same one ("-pV", "-p=V")
///   -p<     the same, but only in the same word
///   -p^     the same, but only in the next word
///   get -p> the option, once the word "get" has been seen
///   get ? ! behind the word "get": ? any word, ! the credential, # one only if it looks like it
///           (options between them are passed over; "get*" is a word that begins with "get")
///
/// Behind an option or "!" a character says that only a part of the value is the credential: what
/// follows ":", "%", "," or "=" in it, or stands between "/" and the last "@", or between ":" and
/// the last "@" ("@"), or follows "pass:" ("~"); or that it is one only if it looks like it ("#").
///
/// For single programs there are also: "!last" is the last word, where an option holds "b"
/// (htpasswd); "!url" what follows "://"; "!dsn" what follows ",p=".
struct Program {
  std::string_view names;
  std::string_view rules;
};

// New programs go here.
constexpr Program kPrograms[] = {
    // Databases.
    {"mysql mariadb mysqldump mariadb-dump mysqlimport mysqlcheck mysqlslap mysqlshow mysqlbinlog "
     "mysqlpump mysql_upgrade mariadb-check mariadb-import mariabackup xtrabackup innobackupex "
     "mariadb-backup mariadb-binlog mariadb-show mariadb-slap mariadb-upgrade mysqlbackup "
     "mysql_tzinfo_to_sql mysqlhotcopy mysqltest",
     "-p<"},
    {"mysqladmin mariadb-admin", "-p< | password !"},
    {"pt-table-checksum pt-table-sync pt-archiver pt-online-schema-change pt-heartbeat "
     "pt-stalk pt-summary pt-mysql-summary pt-slave-restart pt-slave-find pt-upgrade "
     "pt-variable-advisor pt-index-usage pt-config-diff pt-table-usage "
     "pt-show-grants pt-query-digest pt-find pt-deadlock-logger pt-kill pt-duplicate-key-checker",
     "-p> | !dsn"},
    {"mysqlsh mycli mydumper myloader mytop innotop maxctrl maxadmin", "-p> | --ask-pass<"},
    {"mongo mongosh mongodump mongorestore mongoexport mongoimport mongostat mongotop mongofiles "
     "legacy-mongo mongosqld mongodrdl mongo-connector",
     "-p>"},
    {"redis-cli keydb-cli valkey-cli redis-benchmark rdb valkey-benchmark keydb-benchmark iredis "
     "redli "
     "rdcli memtier_benchmark",
     "-a> | auth ! | AUTH ! | AUTH ? ! | "
     "requirepass ! | masterauth ! | ><| --authenticate>:"},
    {"redis-server keydb-server valkey-server", "--requirepass> | --masterauth>"},
    {"sqlplus sqlldr exp imp expdp impdp rman tnsping sqlcl orapwd dgmgrl",
     "!/ | target !/ | connect !/ | catalog !/ | auxiliary !/"},
    {"sqlcmd bcp osql tsql freebcp bsqldb defncopy fisql mssql-cli mssql-scripter", "-P^ | -P<"},
    {"isql iusql", "-P^ | -P< | -v ? ? ! | ? ? #"},
    {"sqlpackage", "/tp:< | /sp:<"},
    {"db2look db2move db2relocatedb", "-w> | -p>"},
    {"db2batch", "-a>/"},
    {"dsmadmc dsmc dsmadm", "-pa> | -pass>"},
    {"hdbsql", "-p>"},
    {"hdbuserstore", "set ? ? ? ! | SET ? ? ? !"},
    {"admintools", "-p>"},
    {"nzsql nzload nz_backup nz_restore", "-pw>"},
    {"cbc cbc-pillowfight cbc-n1ql cbc-cat cbc-create cbc-stats", "-P>"},
    {"cbstats cbtransfer cbepctl cbworkloadgen", "-p>"},
    {"pg_md5 pg_enc", "!"},
    {"pmcmd tabcmd pcs duck fs_cli odbcping", "-p>"},
    {"pmrep", "-x>"},
    {"infacmd.sh infacmd", "-pd>"},
    {"gbak gfix gsec isql-fb fbsvcmgr", "-pas> | -pass> | -pw> | -p> | password !"},
    {"db2", "using !"},
    {"cqlsh dsbulk nodetool cassandra-stress sstableloader", "-p> | -pw>"},
    {"cypher-shell neo4j-admin neo4j", "-p> | set-initial-password !"},
    {"etcdctl", "--user>: | user add !:"},
    {"influx influxd", "-p> | -t>"},
    {"vsql exaplus arangosh arangodump arangorestore arangoimport arangoexport surreal monetdb",
     "-w> | -p> | --pass>"},
    {"beeline sqlline hive impala-shell", "-p> | --ldap_password>"},
    {"clickhouse-client clickhouse clickhouse-local", "--password>"},
    {"zkCli.sh zkcli", "addauth ? !:"},
    {"sqoop spark-sql", "--password>"},
    {"couchbase-cli cbq cbbackupmgr cbimport cbexport", "-p>"},
    {"tarantoolctl ksql drill-conf phoenix-sqlline", "-p>"},
    {"elasticsearch-users", "-p>"},
    {"solr", "-u>: | --credentials>:"},
    {"pgbouncer psql pg_dump pg_dumpall pg_restore pgbench createdb pgcli pg_basebackup", ""},
    // Queues and the like.
    {"rabbitmqctl", "add_user ? ! | change_password ? ! | authenticate_user ? !"},
    {"rabbitmqadmin", "-p>"},
    {"mosquitto_pub mosquitto_sub mosquitto_rr mqttx", "-P> | --pw>"},
    {"mqtt hivemq-cli", "-pw>"},
    {"nats nsc", "--password> | --token>"},
    {"mosquitto_ctrl", "-P> | setClientPassword ? ! | createClient ? -p>"},
    {"emqx_ctl emqx", "admins add ? ! | admins passwd ? !"},
    {"stomp", "-W>"},
    // Transfers.
    {"bitsadmin", "/setcredentials ? ? ? ? ! | /SetCredentials ? ? ? ? !"},
    {"cvs mount_smbfs mount_afp mount_webdav smbutil polenum", "-d>@ | !@"},
    {"hurl", "-u>: | --user>:"},
    {"proxytunnel", "-P>: | -R>:"},
    {"dirb whatweb", "-u>:"},
    {"skipfish", "-A>:"},
    {"wfuzz wpscan", "--basic>: | --ntlm>: | --digest>: | --wp-auth>: | --http-auth>:"},
    {"gobuster", "-P>"},
    {"crowbar", "-c>"},
    {"oggfwd", "? ? !"},
    {"spotifyd librespot instaloader", "-p>"},
    {"mpc", "-P>"},
    {"curl",
     "-u>: | --user>: | -U>: | --proxy-user>: | -E>: | --cert>: | --pass> | -b>= | "
     "--oauth2-bearer> | --tlspassword> | --proxy-pass>"},
    {"http https xh xhs httpie", "-a>: | --auth>:"},
    {"ab", "-A>: | -P>:"},
    {"hey oha bombardier nikto vegeta autocannon", "-a>: | -id>:"},
    {"lftp open", "-u>,"},
    {"ncftp ncftpput ncftpget ncftpls", "-p>"},
    {"psftp pscp plink putty kitty", "-pw> | -pwfile<"},
    {"sshpass", "-p^ | -p<"},
    {"aria2c", "--http-passwd> | --ftp-passwd> | --rpc-secret>"},
    {"wput ftp sftp rsync scp ssh autossh mosh", ""},
    {"yt-dlp youtube-dl yt-dl gallery-dl", "-p> | -2> | --ap-password> | --video-password>"},
    {"megadl megaput megals megacopy megarm megatools", "-p>"},
    {"mega-login", "? !"},
    {"transmission-remote", "-n>: | --auth>:"},
    {"transmission-daemon", "-v>"},
    {"deluge-console amulecmd amuleweb", "-P> | connect ? ? !"},
    {"subliminal", "--opensubtitles ? ! | --addic7ed ? !"},
    {"miniserve dufs gotty ttyd ghfs", "-a>: | --auth>: | -c>: | --credential>:"},
    {"turnserver turnadmin", "-u>: | --user>: | -p>"},
    {"turnutils_uclient", "-w>"},
    {"apprise shoutrrr", "!url"},
    // Archives and documents.
    {"7z 7za 7zr 7zz p7zip", "-p<"},
    {"rar unrar", "-p< | -hp<"},
    {"zip unzip zipcloak zipnote zipsplit funzip", "-P^ | -P< | --password>"},
    {"arj", "-g<"},
    {"qpdf", "--encrypt ! ! | --password> | --user-password> | --owner-password>"},
    {"pdftk", "user_pw ! | owner_pw ! | input_pw !"},
    {"pdftotext pdfinfo pdftoppm pdftocairo pdfimages pdfdetach pdftohtml pdftops pdffonts",
     "-upw> | -opw>"},
    {"mutool", "-p> | -U> | -O>"},
    {"pdfcpu", "-upw> | -opw>"},
    {"cpdf", "-encrypt ? ! ! | owner=< | user=<"},
    {"msoffcrypto-tool steghide stegsnow stegosuite openstego fcrackzip aescrypt", "-p> | -x^#"},
    {"outguess mcrypt mdecrypt", "-k>"},
    {"ccrypt ccencrypt ccdecrypt ccat", "-K>"},
    {"zulucrypt-cli zulumount-cli bdeinfo bdemount", "-p>"},
    {"dislocker dislocker-fuse dislocker-file", "-u< | -p<"},
    {"hdparm",
     "--security-unlock> | --security-set-pass> | --security-erase> | "
     "--security-erase-enhanced> | --security-disable>"},
    {"sedutil-cli sedutil",
     "--initialSetup ! | --initialsetup ! | --setSIDPassword ! ! | --setSIDPwd ! ! | "
     "--setAdmin1Pwd ! ! | --revertTPer ! | --revertNoErase ! | --setLockingRange ? ? ! | "
     "--enableLockingRange ? ! | --disableLockingRange ? ! | --setMBRDone ? ! | "
     "--setMBREnable ? ! | --loadPBAimage ! | --PSIDrevert ! | --query !"},
    {"tpm2_create tpm2_createprimary tpm2_load tpm2_unseal tpm2_nvread tpm2_nvwrite tpm2_nvdefine "
     "tpm2_sign tpm2_changeauth tpm2_clear tpm2_takeownership tpm2_rsadecrypt",
     "-p>#| -P>#"},
    {"keyctl", "add ? ? ! | update ? !"},
    {"jwt", "-S>"},
    {"easyrsa", "--passin>~ | --passout>~"},
    {"sapgenpse", "-x> | -p^#"},
    // Keys and certificates.
    {"openssl",
     "-pass>~ | -passin>~ | -passout>~ | -password>~ | -k> | -K> | passwd ! | -hmac> | "
     "-psk> | -srppass> | -macopt>: | -kdfopt>:"},
    {"gpg gpg2 gpgsm", "--passphrase>"},
    {"gpg-preset-passphrase", "-P> | --passphrase>"},
    {"keytool jarsigner",
     "-storepass> | -keypass> | -srcstorepass> | -deststorepass> | "
     "-destkeypass> | -srckeypass> | -new>"},
    {"apksigner bundletool", "--ks-pass>~ | --key-pass>~"},
    {"osslsigncode signtool", "-pass> | /p>"},
    {"pk12util certutil", "-W> | -K>"},
    {"pkcs11-tool pkcs15-tool pkcs15-init", "-p> | --pin> | --so-pin> | --new-pin>"},
    {"softhsm2-util p11tool", "--pin> | --so-pin> | --set-pin>"},
    {"yubico-piv-tool ykman ykpamcfg", "-P> | -K> | -p> | -k> | -N> | --pin> | --management-key>"},
    {"ssh-keygen", "-N> | -P>"},
    {"oathtool totp", "!"},
    {"mkpasswd", "-m ? ! | #"},
    {"slappasswd", "-s>"},
    {"htpasswd mosquitto_passwd htdbm", "!last"},
    {"caddy", "--plaintext> | -p>"},
    {"ansible-vault", "encrypt_string !"},
    {"veracrypt truecrypt", "-p> | --password>"},
    {"vault",
     "login # | operator unseal ! | unseal ! | kv put ? # | kv patch ? # | token lookup # "
     "| token revoke # | token renew # | unwrap # | -decode> | -otp>"},
    {"consul nomad serf dkron",
     "-encrypt> | --encrypt> | -http-auth>: | acl set-agent-token ? ! | "
     "kv put ? #"},
    {"bw", "unlock ! | login ? !"},
    {"op", "signin ? ? ? !"},
    {"chamber credstash", "write ? ? ! | put ? !"},
    {"doppler", "secrets set ? ! | configure set token !"},
    {"keepassxc-cli lpass", ""},
    {"secret-tool", ""},
    // Directories and shares.
    {"ldapsearch ldapmodify ldapadd ldapdelete ldapwhoami ldapcompare ldapmodrdn ldapexop ldapvi "
     "dsconf dsidm",
     "-w^ | -w<"},
    {"dsconfig dsreplication manage-account import-ldif export-ldif imtest smtptest pop3test "
     "cyradm "
     "vastool sieveshell",
     "-w^#"},
    {"testsaslauthd ldapdomaindump windapsearch adjoin", "-p>"},
    {"domainjoin-cli", "join ? ? !"},
    {"ipa-client-install ipa-server-install ipa-replica-install ipa-adtrust-install "
     "ipa-dns-install",
     "-p> | -w> | -a> | -P>"},
    {"secretsdump psexec wmiexec smbexec atexec dcomexec getuserspns getnpusers gettgt getst "
     "ticketer "
     "lookupsid samrdump mssqlclient getadusers addcomputer rpcdump reg services smbserver "
     "impacket-secretsdump impacket-psexec impacket-wmiexec impacket-smbexec impacket-mssqlclient "
     "impacket-getuserspns impacket-getnpusers impacket-gettgt impacket-lookupsid "
     "impacket-smbclient impacket-addcomputer",
     "-hashes> | -aesKey> | -nthash> | -computer-pass> | -p^ | !@"},
    {"certipy bloodhound-python bloodyad lsassy donpapi pywerview ldeep rdp_check",
     "-p> | -H> | -hashes> | --hashes>"},
    {"rubeus", "/rc4:< | /aes256:< | /password:<"},
    {"psexec64 paexec remcom", "-p>"},
    {"tasklist taskkill systeminfo schtasks driverquery openfiles gpresult getmac eventcreate",
     "/p> | /P> | /rp> | /RP>"},
    {"netdom", "/pd:< | /po:< | /PD:<"},
    {"csvde ldifde", "-b ? ? !"},
    {"sc", "password= !"},
    {"ldappasswd", "-w> | -s> | -a>"},
    {"smbclient smbget rpcclient net winexe wmic pdbedit smbcacls smbtree smbcquotas samba-tool "
     "smbtorture mount.smb3 impacket-samrdump",
     "-U>% | --user>% | user create ? ! | user add ? ! | --password> | --newpassword> "
     "| user ? # | use ? # | use ? ? # | ? #"},
    {"wbinfo", "-a>% | --authenticate>%"},
    {"smbmap crackmapexec nxc netexec evil-winrm enum4linux enum4linux-ng kerbrute",
     "-p> | -H> | --password>"},
    {"hydra medusa ncrack patator", "-p>"},
    {"kadmin kadmin.local addprinc cpw ktutil", "-w> | -pw>"},
    {"kcadm.sh kc.sh kcadm", "-p> | --password> | --new-password>"},
    {"useradd usermod adduser groupadd groupmod", "-p>"},
    // Machines and networks.
    {"snmpwalk snmpget snmpset snmpbulkwalk snmpbulkget snmpgetnext snmptable snmpstatus snmptrap "
     "snmpinform snmpdf snmptranslate snmpdelta snmptest snmpusm snmpnetstat",
     "-A> | -X> | -c>"},
    {"check_snmp", "-C> | -A> | -X>"},
    {"check_http check_curl", "-a>: | -b>:"},
    {"check_mysql check_pgsql check_mysql_health check_imap check_ldap", "-p^ | -P^"},
    {"check_mssql check_mongodb check_rabbitmq check_disk_smb check_vmware_esx check_smtp "
     "check_wmi",
     "-p^# | -P^#"},
    {"check_nt", "-s>"},
    {"radtest", "? ! ? ? !"},
    {"radclient radeapclient", "? ? !"},
    {"eapol_test", "-s>"},
    {"snmp-check", "-c>"},
    {"smcipmitool", "? ? !"},
    {"ipmicfg", "setpwd ? !"},
    {"esxcli resxtop vicfg-nics vifs vmkfstools vihostupdate", "-p^#"},
    {"ipmitool", "-P> | -K> | set password ? !"},
    {"ipmipower ipmiconsole ipmi-sensors ipmi-sel ipmi-fru ipmi-chassis bmc-info racadm "
     "redfishtool "
     "ilorest",
     "-p>"},
    {"xfreerdp xfreerdp3 wlfreerdp sdl-freerdp sdl-freerdp3 freerdp",
     "/p:< | /gp:< | /pth:< | -p>"},
    {"rdesktop", "-p>"},
    {"x11vnc x0vncserver vncdo vncdotool", "-passwd> | -viewpasswd> | -p> | -storepasswd>"},
    {"grdctl", "set-password ! | set-credentials ? !"},
    {"teamviewer", "passwd !"},
    {"spicy remote-viewer virt-viewer", "-w>"},
    {"wpa_passphrase", "? !"},
    {"wpa_cli", "psk ! | passphrase ! | password ! | wep_key0 !"},
    {"iwconfig iw", "key ! | enc !"},
    {"create_ap", "? ? ? !"},
    {"nmcli connmanctl", "password ! | *psk ! | *.password ! | *wep-key0 ! | *secret ! | *pin !"},
    {"networksetup",
     "-setairportnetwork ? ? ! | -setwebproxy ? ? ? ? ? ! | "
     "-setsecurewebproxy ? ? ? ? ? ! | -addpreferredwirelessnetworkatindex ? ? ? ? !"},
    {"aireplay-ng airdecap-ng airolib-ng", "-p>"},
    {"openconnect openfortivpn", "-C> | --cookie> | -p>"},
    {"frpc frps netbird k3s rke2 k0s rancher tea", "-t>#| -k>#"},
    {"npc", "-vkey>"},
    {"bore", "-s>"},
    {"brook cntlm", "-p>"},
    {"udp2raw speederv2", "-k>"},
    {"edge", "-k^#"},
    {"iodine iodined", "-P>"},
    {"warp-cli", "set-license ! | license !"},
    {"pppd pon", "password !"},
    {"ss-manager ss-local ss-server ss-redir ss-tunnel sslocal ssserver shadowsocks microsocks",
     "-k> | -P>"},
    {"chisel", "--auth>:"},
    {"mullvad", "account login ! | account set !"},
    {"nordvpn protonvpn expressvpn", "login --token> | activate !"},
    {"iscsiadm", "*password -v>"},
    {"upscmd upsrw", "-p>"},
    {"govc xe prlctl vmrun", "-pw> | -gp> | -vp> | --userpasswd>:"},
    {"adb", "pair ? !"},
    {"virsh", "secret-set-value ? ! | --base64> | set-user-password ? ? !"},
    {"vboxmanage", "setcredentials ? !"},
    {"guestfish guestmount virt-cat virt-inspector virt-filesystems virt-ls", "--key>:"},
    {"pihole", "-p> | setpassword !"},
    {"synouser", "--setpw ? ! | --add ? !"},
    {"changepass.pl", "? ? !"},
    {"v-add-user v-change-user-password", "? !"},
    {"v-add-database v-add-mail-account", "? ? ? !"},
    {"bitcoin-cli litecoin-cli dogecoin-cli bitcoind dash-cli",
     "walletpassphrase ! | encryptwallet ! | walletpassphrasechange ! ! | importprivkey !"},
    {"monero-wallet-cli monero-wallet-rpc monerod", "--rpc-login>: | --password>"},
    // Mail and messages.
    {"swaks sipp", "-ap> | --auth-password>"},
    {"sendemail", "-xp>"},
    {"ssmtp msmtp mailsend mailsend-go smtp-cli", "-ap> | -pass>"},
    {"doveadm", "pw -p> | auth test ? ! | auth login ? !"},
    {"sendxmpp", "-p>"},
    {"blat", "-pw>"},
    {"zmprov", "ca ? ! | createAccount ? ! | sp ? ! | setPassword ? ! | -p^"},
    {"telegram-send telegram telegram.sh gotify", "-t>#"},
    {"signal-cli", "setPin !"},
    {"irssi", "-w>"},
    {"sic", "-k>"},
    {"sipsak", "-a>"},
    {"kamctl kamailio-ctl opensipsctl", "add ? ! | passwd ? !"},
    {"ejabberdctl prosodyctl", "register ? ? ! | change_password ? ? ! | check_password ? ? !"},
    {"register_new_matrix_user", "-p> | -k>"},
    {"mumble-server murmurd", "-supw>"},
    {"mcrcon", "-p>"},
    {"rcon rcon-cli rconc arrcon", "-p>#| -P>#"},
    {"srcds_run srcds_linux hlds_run hlds_linux srcds",
     "+rcon_password ! | +sv_password ! | +sv_setsteamaccount ! | +password !"},
    {"steamcmd steamcmd.sh", "+login ? !"},
    {"ntfy", "-u>: | --user>: | -k>"},
    {"imapsync", "--password1> | --password2>"},
    // Images and clusters.
    {"docker podman nerdctl buildah img finch",
     "login -p> | login --password> | --creds>: | swarm join --token>"},
    {"ctr", "-u>: | --user>:"},
    {"crictl", "--creds>: | --auth>"},
    {"kustomize", "secret --from-literal>="},
    {"odo", "login -p>"},
    {"civo", "apikey save ? ! | apikey add ? !"},
    {"pulumi", "config set ? --secret ! | config set --secret ? !"},
    {"swift", "-K^#"},
    {"gcloud", "activate-refresh-token ? !"},
    {"skopeo", "login -p> | --creds>: | --src-creds>: | --dest-creds>:"},
    {"crane oras regctl helm", "login -p> | --password>"},
    {"kubectl oc k", "secret --from-literal>= | login -p> | login --token>"},
    {"cf ibmcloud az", "login -p> | -p^#| auth ? ! | secret set --value>"},
    {"microk8s", "join !"},
    {"ceph rbd rados", "--key>"},
    {"cosign notation", "login -p>"},
    {"act", "-s>="},
    {"doctl", "-t> | --access-token>"},
    {"heroku flyctl vercel netlify railway supabase surge render",
     "-t> | --token> | --auth> | secrets set != != != !="},
    {"fly", "login -p> | -t> | secrets set != != != !="},
    {"aws",
     "configure set *key ! | configure set *token ! | put-parameter --value> | "
     "--secret-string> | --secret-access-key>"},
    {"gh", "secret set ? -b> | secret -b> | secret --body> | variable ? --body^"},
    {"glab", "auth -t> | -t> | variable set ? !"},
    {"gitlab-runner", "-r> | -t> | --registration-token>"},
    {"jenkins-cli.jar jenkins-cli", "-auth>:"},
    {"s3cmd s3fs goofys", "--secret_key>"},
    {"mc mcli",
     "alias set ? ? ! ! | config host add ? ? ! ! | admin user add ? ? ! | "
     "admin user add ? !"},
    {"b2", "authorize ? ! | authorize-account ? ! | authorize_account ? !"},
    {"rclone", "obscure ! | reveal ! | --pass> | *pass= ! | config password ? ? !"},
    {"kopia duplicacy", "-p>"},
    {"nextcloudcmd owncloudcmd seaf-cli", "-p>"},
    {"mountpoint mount.cifs", ""},
    // Packages and services of makers.
    {"twine", "-p> | --password>"},
    {"uv", "publish -t> | publish -p> | publish --token>"},
    {"hatch flit", "-a>"},
    {"anaconda conda", "-t>"},
    {"poetry", "config pypi-token* ! | config http-basic* ? ! | publish -p> | -p>"},
    {"cargo", "login ! | --token>"},
    {"gem", "-k> | --key>"},
    {"bundle bundler", "config ? !: | config set ? !: | set ? !:"},
    {"composer",
     "config http-basic* ? ! | config github-oauth* ! | config gitlab-token* ! | "
     "config bearer* ! | config gitlab-oauth* !"},
    {"dotnet nuget choco", "push ? # | push -k> | --api-key> | -k> | setapikey ! | -ApiKey> | -p^"},
    {"npm yarn pnpm",
     "set *_authToken ! | config set *_authToken ! | config set *_auth ! | config set *_password "
     "!"},
    {"vsce ovsx", "-p> | --pat>"},
    {"wandb comet", "login # | login --key>"},
    {"ngrok", "authtoken ! | add-authtoken !"},
    {"snyk", "auth #"},
    {"cloudflared", "install ! | --token>"},
    {"codecov codecovcli", "-t>"},
    {"vastai", "set api-key !"},
    {"llm openai", "keys --value> | -k>"},
    {"knife", "-P>"},
    {"bolt", "-p>"},
    {"modal", "--token-id>"},
    {"prefect", "login -k>"},
    {"gradient", "apiKey !"},
    {"yolo", "login !"},
    {"runpodctl", "--apiKey>"},
    {"airflow", "users -p>"},
    {"splunk", "-auth>: | -password>"},
    {"icinga2", "--ticket>"},
    {"grafana-cli grafana", "reset-admin-password !"},
    {"hadoop", "-value>"},
    {"fossil", "user password ? ! | user new ? ? ! | -B>:"},
    {"drush", "user:password ? ! | upwd ? ! | user-password ? !"},
    {"console",
     "security:hash-password ! | security:encode-password ! | fos:user:create ? ? ! | "
     "fos:user:change-password ? !"},
    {"mattermost mmctl", "user password ? ! | user change-password ? -p>"},
    {"authelia", "hash-password !"},
    {"pocketbase",
     "admin create ? ! | admin update ? ! | superuser create ? ! | superuser upsert ? ! | "
     "superuser update ? !"},
    {"strapi", "-p^#"},
    {"filebrowser", "users add ? ! | users update -p>"},
    {"sapcontrol saphostctrl", "-user ? !"},
    {"brbackup brarchive brrestore brconnect", "-u>/"},
    {"asnpwd", "password !"},
    {"conan", "user -p> | login -p>"},
    {"expo eas", "login -p>"},
    {"altool itmstransporter", "-p>"},
    {"notarytool xcrun", "-p> | --password>"},
    {"svn hg p4", "-P> | --password>"},
    {"nifi.sh", "set-single-user-credentials ? !"},
    {"add-user.sh", "-p> | --password>"},
    {"jboss-cli.sh asadmin", "--password>"},
    // macOS.
    {"security", "-p> | -w> | -P> | -k> | -setkeychainpass !"},
    {"dscl", "-passwd ? ! | -passwd ? ! ! | -create ? Password !"},
    {"sysadminctl dseditgroup", "-password> | -adminPassword> | -newPassword> | -P>"},
    {"kickstart", "-vncpw>"},
    // In PowerShell and SQL.
    {"convertto-securestring", "! | -string>"},
    // Commands of deluge-console.
    {"connect", "? ? #"},
};

/// Programs that run other programs, whose names and arguments follow.
constexpr std::string_view kLauncherNames =
    "sudo doas su env nohup timeout nice ionice setsid stdbuf time watch xargs parallel chroot "
    "unshare nsenter systemd-run systemd-inhibit docker docker-compose podman nerdctl kubectl oc "
    "ssh autossh mosh sshpass sh bash zsh dash ksh fish busybox ash tini dumb-init catatonit "
    "gosu su-exec runuser setpriv chrt taskset numactl strace ltrace gdb perf valgrind script "
    "caffeinate arch flock chpst s6-setuidgid runit nix nix-shell direnv dotenv python python2 "
    "python3 pypy node nodejs deno bun npx npm yarn pnpm uv uvx pipx poetry pipenv bundle ruby "
    "perl php java lxc incus lxc-attach lxc-exec machinectl toolbox distrobox flatpak snap "
    "firejail bwrap proot fakeroot proxychains proxychains4 torsocks torify unbuffer expect "
    "reptyr screen tmux dtach abduco pm2 supervisord foreman honcho overmind crond at batch "
    "vagrant ansible find entr fd make just task rlwrap winpty wine exec command eval builtin "
    "kubectl.exe wsl xcrun osascript pwsh powershell cmd rtk mpirun srun sbatch torchrun "
    "accelerate op doppler dotenvx infisical chamber aws-vault envconsul vault consul-template";

/// Launchers with options whose values may look like the name of a program: "--name mysql".
constexpr std::string_view kContainers = "docker podman nerdctl kubectl oc";

/// Programs that read a password from what is piped to them, whatever their options.
constexpr std::string_view kReaders =
    "chpasswd cryptsetup kinit smbpasswd vncpasswd tigervncpasswd secret-tool passwd realm adcli "
    "su "
    "pass gopass bw lpass keepassxc-cli zfs saslpasswd2 saslpasswd grub-mkpasswd-pbkdf2 pwscore "
    "cracklib-check anydesk pw ldappasswd ipa kwallet-query mkpasswd openconnect";

}  // namespace credentials
